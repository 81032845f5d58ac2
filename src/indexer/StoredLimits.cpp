#include "indexer/StoredLimits.h"

#include "indexer/SafeFile.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

namespace indexer {

namespace {

using Json = nlohmann::json;
using namespace std::chrono_literals;

constexpr std::size_t largestFile = std::size_t {256} << 10U;
constexpr double fiveHours = 5 * 60; // minutes
constexpr double week = 7 * 24 * 60;

/// The file's object; anything but one is an empty one.
Json objectIn(const std::filesystem::path &file)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    const std::string bytes = readFile(file, largestFile).bytes.value_or(std::string());
    const bool isMarked = bytes.starts_with(byteOrderMark);
    const auto begin = bytes.begin()
        + static_cast<std::ptrdiff_t>(isMarked ? byteOrderMark.size() : std::size_t {0});
    Json held = Json::parse(begin, bytes.end(), nullptr, false);
    return held.is_object() ? std::move(held) : Json::object();
}

std::optional<double> numberIn(const Json &object, const char *key)
{
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number()) {
        return std::nullopt;
    }
    const auto number = found->get<double>();
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// A text or a number.
std::optional<TimePoint> momentIn(const Json &object, const char *key)
{
    if (const auto number = numberIn(object, key)) {
        return momentOfNumber(*number);
    }
    const auto found = object.find(key);
    return found != object.end() && found->is_string()
        ? parseMoment(found->get_ref<const std::string &>())
        : std::nullopt;
}

/// Nothing for what is no window with a percentage. Its length is 0 where it is not told.
std::optional<LimitWindow> windowIn(const Json &object, const char *key)
{
    constexpr double mostPercent = 999; // beyond this it is nonsense
    constexpr double mostMinutes = 366 * 24 * 60;
    const auto found = object.find(key);
    const auto percent =
        found != object.end() && found->is_object() ? numberIn(*found, "percent") : std::nullopt;
    if (!percent) {
        return std::nullopt;
    }
    return LimitWindow {.percent = std::clamp(*percent, 0.0, mostPercent),
        .minutes = std::clamp(numberIn(*found, "minutes").value_or(0), 0.0, mostMinutes),
        .resetsAt = momentIn(*found, "resetsAt")};
}

/// In Claude Code's file the keys tell how long the windows are.
StoredLimits readClaude(const std::filesystem::path &file)
{
    const Json object = objectIn(file);
    StoredLimits limits {
        .provider = Provider::Claude, .updatedAt = momentIn(object, "updatedAt"), .windows = {}};
    for (const auto &[key, minutes] : {std::pair("fiveHour", fiveHours), {"sevenDay", week}}) {
        if (auto window = windowIn(object, key)) {
            window->minutes = minutes;
            limits.windows.push_back(*window);
        }
    }
    return limits;
}

/// In Codex's file each window tells it itself, and the order of the two does not matter.
StoredLimits readCodex(const std::filesystem::path &file)
{
    const Json object = objectIn(file);
    StoredLimits limits {
        .provider = Provider::Codex, .updatedAt = momentIn(object, "updatedAt"), .windows = {}};
    for (const char *key : {"primary", "secondary"}) {
        if (const auto window = windowIn(object, key)) {
            limits.windows.push_back(*window);
        }
    }
    std::stable_sort(limits.windows.begin(), limits.windows.end(),
        [](const LimitWindow &a, const LimitWindow &b) { return a.minutes < b.minutes; });
    for (std::size_t i = 0; i < limits.windows.size(); ++i) {
        double &minutes = limits.windows[i].minutes;
        minutes = minutes > 0 ? minutes : i == 0 ? fiveHours : week;
    }
    return limits;
}

} // namespace

std::vector<StoredLimits> readStoredLimits(
    const std::filesystem::path &data, const std::filesystem::path &claude)
{
    std::vector<StoredLimits> all {
        readClaude(claude / "usage-limits.json"), readCodex(data / "codex-limits.json")};
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

} // namespace indexer
