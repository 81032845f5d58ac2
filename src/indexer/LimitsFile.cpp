#include "indexer/LimitsFile.h"

#include "indexer/SafeFile.h"

#include <nlohmann/json.hpp>

namespace indexer {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t largestFile = std::size_t {256} << 10U;

Json windowJson(const LimitWindow &window)
{
    Json json {{"percent", window.percent}, {"minutes", window.minutes}};
    if (window.resetsAt) {
        json["resetsAt"] = momentText(*window.resetsAt);
    }
    return json;
}

/// When the reading in a file was made; nothing for what is no such file.
std::optional<TimePoint> updatedAt(const std::filesystem::path &file)
{
    const FileContent content = readFile(file, largestFile);
    const Json held = Json::parse(content.bytes.value_or(std::string()), nullptr, false);
    const auto found = held.is_object() ? held.find("updatedAt") : held.end();
    return held.is_object() && found != held.end() && found->is_string()
        ? parseMoment(found->get_ref<const std::string &>())
        : std::nullopt;
}

} // namespace

std::string limitsJson(const LimitReading &reading)
{
    Json json = Json::object();
    for (std::size_t i = 0; i < reading.windows.size(); ++i) {
        json[i == 0 ? "primary" : "secondary"] = windowJson(reading.windows[i]);
    }
    json["updatedAt"] = momentText(reading.time);
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

} // namespace indexer
