#include "usage/codex/ThreadNames.h"

#include "formats/TimeStamp.h"
#include "usage/lines/JsonFields.h"
#include "usage/lines/JsonLine.h"
#include "usage/lines/LineReader.h"
#include "usage/lines/Title.h"
#include "usage/values/HashOf.h"

#include <unordered_map>

namespace usage {

namespace {

/// Far longer than an id and a name.
constexpr std::size_t longestLine = std::size_t {64} << 10U;
/// Nobody has so many threads; more would take the memory.
constexpr std::size_t mostThreads = 500'000;

/// What a line tells; the texts last as long as the line and `fields` do.
struct NameLine {
    std::string_view id;
    std::string_view time;
    std::string name;
};

bool take(NameLine &line, JsonFields &fields, std::string_view key, JsonFields::Value value)
{
    if (key == "id") {
        return fields.text(value, line.id);
    }
    if (key == "updated_at") {
        return fields.text(value, line.time);
    }
    if (key == "thread_name" && isType(value, simdjson::ondemand::json_type::string)) {
        const std::string_view token = scalarToken(value);
        const bool isWhole = isSound(value);
        line.name = isWhole ? tidyTitle(token) : std::string();
        return isWhole;
    }
    return isSound(value);
}

} // namespace

bool readThreadNames(
    const std::filesystem::path &file, const std::function<void(const ThreadName &)> &told)
{
    LineReader lines;
    if (lines.open(file)) {
        return false;
    }
    JsonLine json(longestLine);
    JsonFields fields;
    std::unordered_map<std::uint64_t, TimePoint> newest; // by the hash of the thread's id
    while (const auto text = lines.next()) {
        NameLine line;
        fields.restart();
        const bool isNamed = text->size() <= longestLine
            && json.eachTopField(*text,
                [&](std::string_view key, JsonFields::Value value) {
                    return take(line, fields, key, value);
                })
            && !line.id.empty();
        const std::uint64_t thread = hashOf(line.id);
        if (!isNamed || (newest.size() >= mostThreads && !newest.contains(thread))) {
            continue;
        }
        const TimePoint time = TimeStamp::parse(line.time).value_or(TimePoint::min());
        TimePoint &held = newest.try_emplace(thread, time).first->second;
        if (time >= held) {
            held = time;
            told({std::string(line.id), std::move(line.name)});
        }
    }
    return !lines.failed();
}

} // namespace usage
