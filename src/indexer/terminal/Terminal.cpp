#include "indexer/terminal/Terminal.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace indexer {

namespace {

std::string_view textOf(const char *value)
{
    return value == nullptr ? std::string_view() : std::string_view(value);
}

std::size_t widthOf(int descriptor, std::string_view told)
{
    std::size_t columns = 0;
    const auto [stop, error] = std::from_chars(told.data(), told.data() + told.size(), columns);
    if (error == std::errc {} && stop == told.data() + told.size() && columns > 0) {
        return columns;
    }
    winsize size {};
    return ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

} // namespace

Terminal terminalOf(int descriptor, const Environment &environment)
{
    if (::isatty(descriptor) == 0) {
        return {};
    }
    return {.isTerminal = true,
        .hasColour =
            textOf(environment("NO_COLOR")).empty() && textOf(environment("TERM")) != "dumb",
        .width = widthOf(descriptor, textOf(environment("COLUMNS")))};
}

Terminal terminalOf(int descriptor)
{
    return terminalOf(descriptor, [](const char *name) { return std::getenv(name); });
}

std::string inked(std::string_view text, Ink ink, const Terminal &terminal)
{
    constexpr std::array<int, 5> codes {0, 1, 2, 33, 31};
    if (!terminal.hasColour || ink == Ink::Plain || text.empty()) {
        return std::string(text);
    }
    return fmt::format("\x1b[{}m{}\x1b[0m", codes.at(static_cast<std::size_t>(ink)), text);
}

} // namespace indexer
