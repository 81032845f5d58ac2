#include "home/Session.h"

#include <fmt/chrono.h>

std::string stamp(std::chrono::sys_time<std::chrono::milliseconds> time)
{
    const auto second = std::chrono::floor<std::chrono::seconds>(time);
    return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z",
        fmt::gmtime(std::chrono::system_clock::to_time_t(second)), (time - second).count());
}
