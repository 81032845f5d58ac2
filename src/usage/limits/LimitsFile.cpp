#include "usage/limits/LimitsFile.h"

#include "formats/JsonObject.h"
#include "formats/TimeStamp.h"
#include "usage/files/SafeFile.h"

#include <nlohmann/json.hpp>

namespace usage {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t largestFile = std::size_t {256} << 10U;

Json windowJson(const LimitWindow &window)
{
    Json json {{"percent", window.percent}, {"minutes", window.minutes}};
    if (window.resetsAt) {
        json["resetsAt"] = TimeStamp::text(*window.resetsAt);
    }
    return json;
}

/// When the reading in a file was made; nothing for what is no such file.
std::optional<TimePoint> updatedAt(const std::filesystem::path &file)
{
    const JsonObject held(readFile(file, largestFile).bytes.value_or(std::string()));
    return held.root() ? timeIn(*held.root(), "updatedAt") : std::nullopt;
}

} // namespace

std::string limitsJson(const LimitReading &reading)
{
    Json json = Json::object();
    for (std::size_t i = 0; i < reading.windows.size(); ++i) {
        json[i == 0 ? "primary" : "secondary"] = windowJson(reading.windows[i]);
    }
    json["updatedAt"] = TimeStamp::text(reading.time);
    if (!reading.plan.empty()) {
        json["plan"] = reading.plan;
    }
    return json.dump() + '\n';
}

std::optional<std::string> writeLimits(
    const std::filesystem::path &file, const WrittenLimits &limits, TimePoint now)
{
    const auto held = updatedAt(file);
    if (held && *held >= limits.time && *held <= now + limitsTolerance) {
        return std::nullopt;
    }
    return replaceFile(file, limits.json);
}

} // namespace usage
