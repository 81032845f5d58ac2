#include "usage/codex/RolloutParser.h"

#include "usage/lines/JsonNumber.h"
#include "usage/lines/Title.h"

#include <algorithm>
#include <charconv>

namespace usage {

using simdjson::ondemand::json_type;

namespace {

/// A type of line, the type of what it carries where there are several, and what it is to us.
struct Known {
    std::string_view type;
    std::string_view payload;
    RolloutKind kind;
};

constexpr std::array known {
    Known {"session_meta", {}, RolloutKind::SessionMeta},
    Known {"turn_context", {}, RolloutKind::TurnContext},
    Known {"token_usage_record", {}, RolloutKind::UsageRecord},
    Known {"event_msg", "token_count", RolloutKind::TokenCount},
    Known {"event_msg", "thread_settings_applied", RolloutKind::SettingsApplied},
    Known {"event_msg", "thread_name_updated", RolloutKind::NameUpdated},
    Known {"event_msg", "user_message", RolloutKind::Prompt},
    Known {"response_item", "message", RolloutKind::Prompt},
};

constexpr FieldTable<RolloutLine, std::string_view, 9> payloadTexts {{
    {"id", &RolloutLine::id},
    {"timestamp", &RolloutLine::createdAt},
    {"forked_from_id", &RolloutLine::forkedFrom},
    {"parent_thread_id", &RolloutLine::parent},
    {"cwd", &RolloutLine::cwd},
    {"model", &RolloutLine::model},
    {"turn_id", &RolloutLine::turn},
    {"thread_id", &RolloutLine::thread},
    {"response_id", &RolloutLine::response},
}};
constexpr FieldTable<RolloutLine, std::string_view, 3> settingTexts {{
    {"model", &RolloutLine::model},
    {"service_tier", &RolloutLine::serviceTier},
    {"cwd", &RolloutLine::cwd},
}};
constexpr FieldTable<RolloutUsage, std::uint64_t, 6> usageCounts {{
    {"input_tokens", &RolloutUsage::input},
    {"cached_input_tokens", &RolloutUsage::cached},
    {"cache_write_input_tokens", &RolloutUsage::cacheWrite},
    {"output_tokens", &RolloutUsage::output},
    {"reasoning_output_tokens", &RolloutUsage::reasoning},
    {"total_tokens", &RolloutUsage::total},
}};
constexpr FieldTable<RolloutWindow, std::optional<double>, 4> windowNumbers {{
    {"used_percent", &RolloutWindow::percent},
    {"window_minutes", &RolloutWindow::minutes},
    {"resets_at", &RolloutWindow::resetsAt},
    {"resets_in_seconds", &RolloutWindow::resetsIn},
}};

bool isKnown(std::string_view type)
{
    return std::any_of(
        known.begin(), known.end(), [type](const Known &each) { return each.type == type; });
}

/// The text up to the next quotation mark, if it holds no escape.
std::string_view plainText(std::string_view rest)
{
    const std::size_t end = rest.find_first_of("\"\\");
    return end == std::string_view::npos || rest[end] != '"' ? std::string_view()
                                                             : rest.substr(0, end);
}

/// Most lines hold what was said and run. They name their types at their front, before any object
/// inside, and end as they should; so they can be told without parsing.
bool isPlainlyUnimportant(std::string_view line)
{
    constexpr std::size_t frontSize = 160;
    constexpr std::string_view typeKey = "\"type\":\"";
    constexpr std::string_view payloadKey = ",\"payload\":{\"type\":\"";
    const std::string_view front = line.substr(0, frontSize);
    const std::size_t at = front.find(typeKey);
    if (at == std::string_view::npos || !line.ends_with('}')
        || front.rfind('{', at) != front.find('{')) {
        return false;
    }
    const std::string_view type = plainText(front.substr(at + typeKey.size()));
    if (type.empty() || !isKnown(type)) {
        return !type.empty();
    }
    std::string_view rest = front.substr(at + typeKey.size() + type.size() + 1);
    if (!rest.starts_with(payloadKey)) {
        return false;
    }
    rest.remove_prefix(payloadKey.size());
    const std::string_view payload = plainText(rest);
    return !payload.empty() && std::none_of(known.begin(), known.end(), [&](const Known &each) {
        return each.type == type && (each.payload.empty() || each.payload == payload);
    });
}

bool takeNumber(simdjson::ondemand::value value, std::optional<double> &target)
{
    if (isType(value, json_type::number)) {
        const std::string_view token = scalarToken(value);
        double number = 0;
        if (isJsonNumber(token)
            && std::from_chars(token.data(), token.data() + token.size(), number).ec
                == std::errc {}) {
            target = number;
        }
    }
    return isSound(value);
}

/// Walks an object's fields; anything but an object tells nothing.
template <typename Take> bool eachIn(simdjson::ondemand::value value, Take take)
{
    return isType(value, json_type::object) ? eachField(value.get_object(), take) : isSound(value);
}

} // namespace

RolloutParser::RolloutParser(JsonLine &json)
    : m_json(json)
{
}

LineOutcome RolloutParser::parse(std::string_view line, RolloutLine &result)
{
    if (isPlainlyUnimportant(line) || line.find_first_not_of(" \t\r") == std::string_view::npos) {
        return LineOutcome::Ignored;
    }
    result = {};
    m_line = &result;
    m_fields.restart();
    m_type = m_payloadType = m_role = {};
    m_hasPayload = false;
    m_matters = true;

    const bool sound = m_json.eachTopField(
        line, [this](std::string_view key, Value value) { return topField(key, value); });
    if (!m_matters) {
        return LineOutcome::Ignored;
    }
    if (!sound) {
        return LineOutcome::NotJson;
    }
    result.kind = kind();
    result.hasImpossibleNumbers = m_fields.hasImpossibleNumbers();
    return result.kind == RolloutKind::Other ? LineOutcome::Ignored : LineOutcome::Parsed;
}

RolloutKind RolloutParser::kind() const
{
    const auto *found = std::find_if(known.begin(), known.end(), [this](const Known &each) {
        return each.type == m_type && (each.payload.empty() || each.payload == m_payloadType);
    });
    const bool isOthers = m_type == "response_item" && m_role != "user";
    return found == known.end() || !m_hasPayload || isOthers ? RolloutKind::Other : found->kind;
}

bool RolloutParser::topField(std::string_view key, Value value)
{
    if (key == "timestamp") {
        return m_fields.moment(value, m_line->timestamp);
    }
    if (key == "type") {
        if (!m_fields.text(value, m_type)) {
            return false;
        }
        m_matters = isKnown(m_type);
        return m_matters;
    }
    return key == "payload" ? payload(value) : isSound(value);
}

bool RolloutParser::payload(Value value)
{
    m_hasPayload = isType(value, json_type::object);
    return eachIn(
        value, [this](std::string_view key, Value inner) { return payloadField(key, inner); });
}

bool RolloutParser::payloadField(std::string_view key, Value value)
{
    if (std::string_view *target = find(payloadTexts, key, *m_line)) {
        return m_fields.text(value, *target);
    }
    if (key == "type") {
        return m_fields.text(value, m_payloadType);
    }
    if (key == "role") {
        return m_fields.text(value, m_role);
    }
    if (key == "thread_name" && isType(value, json_type::string)) {
        m_line->title = scalarToken(value);
    }
    return part(key, value);
}

bool RolloutParser::part(std::string_view key, Value value)
{
    if (key == "source") {
        return source(value);
    }
    if (key == "usage") {
        m_line->hasUsage = isType(value, json_type::object);
        return usage(value, m_line->usage);
    }
    if (key == "info") {
        return info(value);
    }
    if (key == "rate_limits") {
        return limits(value);
    }
    if (key == "thread_settings") {
        return settings(value);
    }
    return key == "content" || key == "message" ? content(value) : isSound(value);
}

/// Where a thread comes from: a text, or an object that tells of the thread that started it.
bool RolloutParser::source(Value value)
{
    return eachIn(value, [this](std::string_view key, Value inner) {
        if (key != "subagent") {
            return isSound(inner);
        }
        m_line->isSubagent = !isType(inner, json_type::null);
        return eachIn(inner, [this](std::string_view way, Value spawn) {
            return way != "thread_spawn" ? isSound(spawn)
                                         : eachIn(spawn, [this](std::string_view name, Value id) {
                                               return name == "parent_thread_id"
                                                   ? m_fields.text(id, m_line->parent)
                                                   : isSound(id);
                                           });
        });
    });
}

bool RolloutParser::info(Value value)
{
    return eachIn(value, [this](std::string_view key, Value inner) {
        if (key == "total_token_usage") {
            m_line->hasUsage = isType(inner, json_type::object);
            return usage(inner, m_line->usage);
        }
        return key == "last_token_usage" ? usage(inner, m_line->last) : isSound(inner);
    });
}

bool RolloutParser::usage(Value value, RolloutUsage &target)
{
    return eachIn(value, [this, &target](std::string_view key, Value inner) {
        std::uint64_t *field = find(usageCounts, key, target);
        return field != nullptr ? m_fields.count(inner, *field) : isSound(inner);
    });
}

bool RolloutParser::limits(Value value)
{
    return eachIn(value, [this](std::string_view key, Value inner) {
        if (key == "limit_id") {
            return m_fields.text(inner, m_line->limits.id);
        }
        if (key == "plan_type") {
            return m_fields.text(inner, m_line->limits.plan);
        }
        if (key == "primary" || key == "secondary") {
            return window(inner, m_line->limits.windows.at(key == "primary" ? 0 : 1));
        }
        return isSound(inner);
    });
}

bool RolloutParser::window(Value value, RolloutWindow &target)
{
    return eachIn(value, [&target](std::string_view key, Value inner) {
        std::optional<double> *field = find(windowNumbers, key, target);
        return field != nullptr ? takeNumber(inner, *field) : isSound(inner);
    });
}

bool RolloutParser::settings(Value value)
{
    return eachIn(value, [this](std::string_view key, Value inner) {
        std::string_view *field = find(settingTexts, key, *m_line);
        m_line->tellsServiceTier = m_line->tellsServiceTier || key == "service_tier";
        return field != nullptr ? m_fields.text(inner, *field) : isSound(inner);
    });
}

/// The text itself, or the first part of a list that the user wrote.
bool RolloutParser::content(Value value)
{
    const auto take = [this](Value text) {
        const bool isText = isType(text, json_type::string);
        const std::string_view token = scalarToken(text);
        const bool sound = isSound(text);
        if (sound && isText && m_line->prompt.empty() && isRealPrompt(token)) {
            m_line->prompt = token;
        }
        return sound;
    };
    if (!isType(value, json_type::array)) {
        return take(value);
    }
    return eachElement(value.get_array(), [&take](Value each) {
        return eachIn(each, [&take](std::string_view key, Value inner) {
            return key == "text" ? take(inner) : isSound(inner);
        });
    });
}

} // namespace usage
