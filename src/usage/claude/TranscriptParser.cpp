#include "usage/claude/TranscriptParser.h"

#include "usage/lines/Title.h"

#include <algorithm>
#include <array>
#include <utility>

namespace usage {

using simdjson::ondemand::json_type;

namespace {

LineKind kindOf(std::string_view type)
{
    using Known = std::pair<std::string_view, LineKind>;
    constexpr std::array known {
        Known {"assistant", LineKind::Assistant},
        Known {"user", LineKind::User},
        Known {"system", LineKind::System},
        Known {"custom-title", LineKind::CustomTitle},
        Known {"agent-name", LineKind::AgentName},
        Known {"ai-title", LineKind::AiTitle},
        Known {"summary", LineKind::Summary},
    };
    for (const auto &[name, kind] : known) {
        if (name == type) {
            return kind;
        }
    }
    return LineKind::Other;
}

constexpr FieldTable<TranscriptLine, std::string_view, 5> lineTexts {{
    {"uuid", &TranscriptLine::uuid},
    {"sessionId", &TranscriptLine::sessionId},
    {"requestId", &TranscriptLine::requestId},
    {"cwd", &TranscriptLine::cwd},
    {"leafUuid", &TranscriptLine::leafUuid},
}};
constexpr FieldTable<TranscriptLine, bool, 4> lineFlags {{
    {"isSidechain", &TranscriptLine::isSidechain},
    {"isMeta", &TranscriptLine::isMeta},
    {"isCompactSummary", &TranscriptLine::isCompactSummary},
    {"isApiErrorMessage", &TranscriptLine::isApiError},
}};
constexpr FieldTable<Usage, std::uint64_t, 4> usageCounts {{
    {"input_tokens", &Usage::input},
    {"output_tokens", &Usage::output},
    {"cache_read_input_tokens", &Usage::cacheRead},
    {"cache_creation_input_tokens", &Usage::cacheCreation},
}};
constexpr FieldTable<Usage, std::uint64_t, 2> writeCounts {{
    {"ephemeral_5m_input_tokens", &Usage::fiveMinutes},
    {"ephemeral_1h_input_tokens", &Usage::oneHour},
}};
constexpr std::array<std::string_view, 4> titleKeys {
    "customTitle", "agentName", "aiTitle", "summary"};

/// Lines written for bookkeeping name their type first and end as they should; they can be told
/// without parsing.
bool isPlainlyUnimportant(std::string_view line)
{
    constexpr std::string_view front = "{\"type\":\"";
    if (!line.starts_with(front) || !line.ends_with('}')) {
        return false;
    }
    line.remove_prefix(front.size());
    const std::size_t end = line.find_first_of("\"\\");
    return end != std::string_view::npos && line[end] == '"'
        && kindOf(line.substr(0, end)) == LineKind::Other;
}

} // namespace

TranscriptParser::TranscriptParser(JsonLine &json)
    : m_json(json)
{
}

LineOutcome TranscriptParser::parse(std::string_view line, TranscriptLine &result)
{
    if (isPlainlyUnimportant(line) || line.find_first_not_of(" \t\r") == std::string_view::npos) {
        return LineOutcome::Ignored;
    }
    result = {};
    m_line = &result;
    m_fields.restart();
    m_matters = true;

    const bool sound = m_json.eachTopField(
        line, [this](std::string_view key, Value value) { return topField(key, value); });
    if (!m_matters) {
        return LineOutcome::Ignored;
    }
    if (!sound) {
        return LineOutcome::NotJson;
    }
    result.hasImpossibleNumbers = m_fields.hasImpossibleNumbers();
    return result.kind == LineKind::Other ? LineOutcome::Ignored : LineOutcome::Parsed;
}

bool TranscriptParser::topField(std::string_view key, Value value)
{
    if (std::string_view *target = find(lineTexts, key, *m_line)) {
        return m_fields.text(value, *target);
    }
    if (bool *target = find(lineFlags, key, *m_line)) {
        *target = scalarToken(value) == "true";
        return isSound(value);
    }
    if (key == "timestamp") {
        return m_fields.moment(value, m_line->timestamp);
    }
    if (key == "message") {
        return isType(value, json_type::object) ? message(value) : isSound(value);
    }
    if (key == "type") {
        return kind(value);
    }
    if (key == "forkedFrom") {
        m_line->isForked = !isType(value, json_type::null);
    } else if (std::find(titleKeys.begin(), titleKeys.end(), key) != titleKeys.end()
        && isType(value, json_type::string)) {
        m_line->title = scalarToken(value);
    }
    return isSound(value);
}

/// The line's type; with one that does not matter, the rest of the line is not looked at.
bool TranscriptParser::kind(Value value)
{
    std::string_view name;
    if (!m_fields.text(value, name)) {
        return false;
    }
    m_line->kind = kindOf(name);
    m_matters = m_line->kind != LineKind::Other;
    return m_matters;
}

bool TranscriptParser::message(Value value)
{
    return eachField(value.get_object(),
        [this](std::string_view key, Value inner) { return messageField(key, inner); });
}

bool TranscriptParser::messageField(std::string_view key, Value value)
{
    if (key == "id") {
        return m_fields.text(value, m_line->messageId);
    }
    if (key == "model") {
        return m_fields.text(value, m_line->model);
    }
    if (key == "stop_reason") {
        m_line->ending = isType(value, json_type::string) ? Ending::Finished
            : isType(value, json_type::null)              ? Ending::Open
                                                          : Ending::Untold;
    } else if (key == "content") {
        return content(value);
    } else if (key == "usage" && isType(value, json_type::object)) {
        m_line->hasUsage = true;
        return usage(value);
    }
    return isSound(value);
}

/// What the user wrote: the content itself, or its first part that the user wrote.
bool TranscriptParser::content(Value value)
{
    if (isType(value, json_type::array)) {
        return eachElement(value.get_array(), [this](Value part) { return contentPart(part); });
    }
    const std::string_view token = scalarToken(value);
    const bool isText = isType(value, json_type::string);
    const bool sound = isSound(value);
    if (sound && isText && isRealPrompt(token)) {
        m_line->prompt = token;
    }
    return sound;
}

bool TranscriptParser::contentPart(Value value)
{
    if (!isType(value, json_type::object)) {
        return isSound(value);
    }
    std::string_view type;
    std::string_view written;
    const bool sound = eachField(value.get_object(), [&](std::string_view key, Value inner) {
        if (key == "type" && isType(inner, json_type::string)) {
            type = scalarToken(inner);
        } else if (key == "text" && isType(inner, json_type::string)) {
            written = scalarToken(inner);
        }
        return isSound(inner);
    });
    m_line->hasToolResult = m_line->hasToolResult || type == "\"tool_result\"";
    if (sound && m_line->prompt.empty() && type == "\"text\"" && !written.empty()
        && isRealPrompt(written)) {
        m_line->prompt = written;
    }
    return sound;
}

bool TranscriptParser::usage(Value value)
{
    return eachField(value.get_object(),
        [this](std::string_view key, Value inner) { return usageField(key, inner); });
}

bool TranscriptParser::usageField(std::string_view key, Value value)
{
    if (std::uint64_t *target = find(usageCounts, key, m_line->usage)) {
        return m_fields.count(value, *target);
    }
    if (key == "cache_creation" && isType(value, json_type::object)) {
        return eachField(value.get_object(), [this](std::string_view part, Value inner) {
            std::uint64_t *target = find(writeCounts, part, m_line->usage);
            return target != nullptr ? m_fields.count(inner, *target) : isSound(inner);
        });
    }
    const std::string_view token = scalarToken(value);
    const bool told = isType(value, json_type::string) && token != "\"standard\"";
    if (key == "speed" && told) {
        m_line->speed = token == "\"fast\"" ? Speed::Fast : Speed::Other;
    } else if (key == "service_tier" && told) {
        m_line->tier = token == "\"batch\"" ? ServiceTier::Batch : ServiceTier::Other;
    }
    return isSound(value);
}

} // namespace usage
