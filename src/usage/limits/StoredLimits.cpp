#include "usage/limits/StoredLimits.h"

#include "formats/CodexLimits.h"
#include "usage/files/SafeFile.h"

#include <algorithm>

namespace usage {

namespace {

using namespace std::chrono_literals;

template <typename Parsed> std::optional<Parsed> parseFile(const std::filesystem::path &file)
{
    constexpr std::size_t largestFile = std::size_t {256} << 10U;
    const auto bytes = readFile(file, largestFile).bytes;
    return bytes ? Parsed::parse(*bytes) : std::nullopt;
}

/// Cut to what a line of a terminal can show.
LimitWindow shownWindow(const Reading &reading, Seconds length)
{
    constexpr double mostPercent = 999;
    constexpr double mostMinutes = 366 * 24 * 60;
    return {.percent = std::clamp(reading.percent, 0.0, mostPercent),
        .minutes = std::clamp(length.count() / 60, 0.0, mostMinutes),
        .resetsAt = reading.resetsAt};
}

StoredLimits storedLimits(Provider provider, const CodexLimits &read)
{
    StoredLimits stored {.provider = provider, .updatedAt = read.limits.updatedAt, .windows = {}};
    if (read.limits.fiveHour) {
        stored.windows.push_back(shownWindow(*read.limits.fiveHour, read.primaryLength));
    }
    if (read.limits.sevenDay) {
        stored.windows.push_back(shownWindow(*read.limits.sevenDay, read.secondaryLength));
    }
    return stored;
}

} // namespace

std::vector<StoredLimits> readStoredLimits(
    const std::filesystem::path &data, const std::filesystem::path &claude)
{
    CodexLimits ofClaude; // whose windows have the usual lengths
    ofClaude.limits = parseFile<Limits>(claude / "usage-limits.json").value_or(Limits {});
    const auto ofCodex = parseFile<CodexLimits>(data / "codex-limits.json");
    std::vector<StoredLimits> all {storedLimits(Provider::Claude, ofClaude),
        storedLimits(Provider::Codex, ofCodex.value_or(CodexLimits {}))};
    std::erase_if(all, [](const StoredLimits &limits) { return limits.windows.empty(); });
    return all;
}

LimitAge ageOf(const StoredLimits &limits, const LimitWindow &window, TimePoint now)
{
    constexpr auto slack = 5min; // of clocks
    constexpr auto longest = std::chrono::days {31};
    const auto length =
        std::chrono::milliseconds(static_cast<std::int64_t>(window.minutes) * 60'000);
    if (limits.updatedAt && *limits.updatedAt > now + slack) {
        return LimitAge::Unknown; // told by a clock that went wrong
    }
    if (window.resetsAt) {
        if (*window.resetsAt <= now) {
            return LimitAge::Reset;
        }
        return *window.resetsAt > now + std::max<std::chrono::milliseconds>(length, longest) + slack
            ? LimitAge::Unknown
            : LimitAge::Live;
    }
    return limits.updatedAt && *limits.updatedAt + length > now ? LimitAge::Live
                                                                : LimitAge::Unknown;
}

std::optional<double> fullestLive(const std::vector<StoredLimits> &all, TimePoint now)
{
    std::optional<double> fullest;
    for (const StoredLimits &limits : all) {
        for (const LimitWindow &window : limits.windows) {
            if (ageOf(limits, window, now) == LimitAge::Live) {
                fullest = std::max(fullest.value_or(0), window.percent);
            }
        }
    }
    return fullest;
}

} // namespace usage
