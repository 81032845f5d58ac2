#include "indexer/terminal/FigureText.h"

#include <array>
#include <ctime>
#include <fmt/chrono.h>
#include <fmt/format.h>

namespace indexer {

using namespace usage;

namespace {

std::tm localTime(TimePoint moment)
{
    using namespace std::chrono;
    const std::time_t stamp = system_clock::to_time_t(floor<seconds>(moment));
    std::tm local {};
    localtime_r(&stamp, &local);
    return local;
}

} // namespace

std::string grouped(std::uint64_t number)
{
    constexpr std::size_t group = 3;
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > group;) {
        at -= group;
        text.insert(at, 1, ',');
    }
    return text;
}

std::string costText(const std::optional<Money> &cost)
{
    constexpr Money::Amount perDollar = 100;
    return cost ? fmt::format("${}.{:02}", cost->cents() / perDollar,
               static_cast<unsigned>(cost->cents() % perDollar))
                : "?";
}

std::string bytesText(std::uint64_t bytes)
{
    constexpr std::array<const char *, 4> units {"kB", "MB", "GB", "TB"};
    constexpr double step = 1000;
    if (bytes < static_cast<std::uint64_t>(step)) {
        return fmt::format("{} bytes", bytes);
    }
    double amount = static_cast<double>(bytes) / step;
    std::size_t unit = 0;
    while (amount >= step && unit + 1 < units.size()) {
        amount /= step;
        ++unit;
    }
    return fmt::format("{:.1f} {}", amount, units.at(unit));
}

std::string spanText(std::chrono::milliseconds span)
{
    using namespace std::chrono;
    const auto whole = duration_cast<days>(span);
    const auto hour = duration_cast<hours>(span - whole);
    const auto minute = duration_cast<minutes>(span - whole - hour);
    if (whole.count() > 0) {
        return fmt::format("{} d {} h", whole.count(), hour.count());
    }
    if (hour.count() > 0) {
        return fmt::format("{} h {} min", hour.count(), minute.count());
    }
    return minute.count() > 0 ? fmt::format("{} min", minute.count()) : "less than a minute";
}

std::string clockText(TimePoint moment, TimePoint now)
{
    const std::tm local = localTime(moment);
    const std::tm today = localTime(now);
    const bool isToday = local.tm_year == today.tm_year && local.tm_yday == today.tm_yday;
    return isToday ? fmt::format("{:%H:%M}", local) : fmt::format("{:%a %d %b %H:%M}", local);
}

} // namespace indexer
