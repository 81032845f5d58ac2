#include "indexer/terminal/Progress.h"

#include "indexer/terminal/FigureText.h"
#include "indexer/terminal/Terminal.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <unistd.h>

namespace indexer {

using namespace usage;

namespace {

using namespace std::chrono_literals;

constexpr std::string_view erase = "\r\x1b[K";

/// "Reading [######--------------]  30%  120.0 MB of 400.0 MB"
std::string bar(std::uint64_t done, std::uint64_t total)
{
    constexpr double cells = 20;
    constexpr double hundred = 100;
    const double share = static_cast<double>(done) / static_cast<double>(total);
    const auto filled = static_cast<std::size_t>(share * cells);
    return fmt::format("Reading [{:-<20}] {:3.0f}%  {} of {}", std::string(filled, '#'),
        share * hundred, bytesText(done), bytesText(total));
}

bool isCapable()
{
    constexpr std::size_t longestBar = 64;
    const char *kind = std::getenv("TERM");
    const Terminal terminal = terminalOf(STDERR_FILENO);
    const bool isWide = terminal.width == 0 || terminal.width > longestBar;
    return terminal.isTerminal && isWide && kind != nullptr && std::string_view(kind) != "dumb";
}

void writeToStandardError(std::string_view text)
{
    // A bar that cannot be drawn is no reason to stop.
    static_cast<void>(!::write(STDERR_FILENO, text.data(), text.size()));
}

} // namespace

Progress::Progress(Write write, Clock clock)
    : m_write(std::move(write))
    , m_clock(std::move(clock))
    , m_next(m_clock() + 500ms)
{
}

void Progress::update(std::uint64_t bytesDone, std::uint64_t bytesTotal)
{
    if (!m_write || bytesTotal == 0) {
        return;
    }
    const auto now = m_clock();
    if (now < m_next) {
        return;
    }
    m_next = now + 100ms;
    m_isDrawn = true;
    m_write(fmt::format("{}{}", erase, bar(std::min(bytesDone, bytesTotal), bytesTotal)));
}

void Progress::finish()
{
    if (m_isDrawn) {
        m_write(erase);
    }
    m_isDrawn = false;
    m_write = nullptr;
}

Progress standardErrorProgress()
{
    return Progress(isCapable() ? Progress::Write(writeToStandardError) : nullptr);
}

} // namespace indexer
