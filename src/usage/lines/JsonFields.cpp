#include "usage/lines/JsonFields.h"

#include "usage/lines/JsonNumber.h"

namespace usage {

using simdjson::ondemand::json_type;

namespace {

/// Longer than any id or path; more is no id, and is not kept.
constexpr std::size_t longestText = 4096;

} // namespace

void JsonFields::restart()
{
    m_unescaped.clear();
    m_hasImpossibleNumbers = false;
}

bool JsonFields::count(Value value, std::uint64_t &target)
{
    if (isType(value, json_type::null)) {
        return isSound(value);
    }
    std::string_view token;
    if (isType(value, json_type::number)) {
        token = scalarToken(value);
        if (!isJsonNumber(token)) {
            return false;
        }
    } else if (!text(value, token)) {
        return false;
    }
    const auto stated = isJsonNumber(token) ? tokenCount(token) : std::nullopt;
    m_hasImpossibleNumbers = m_hasImpossibleNumbers || !stated;
    target = stated.value_or(0);
    return true;
}

bool JsonFields::moment(Value value, std::string_view &target)
{
    if (!isType(value, json_type::number)) {
        return text(value, target);
    }
    target = scalarToken(value);
    return isJsonNumber(target);
}

bool JsonFields::text(Value value, std::string_view &target)
{
    if (!isType(value, json_type::string)) {
        return isSound(value);
    }
    const std::string_view token = scalarToken(value);
    if (!isSound(value)) {
        return false;
    }
    if (token.size() > longestText) {
        return true;
    }
    target = token.substr(1, token.size() - 2);
    if (target.find('\\') != std::string_view::npos) {
        std::string &plain = m_unescaped.emplace_back();
        JsonText characters(token);
        while (const auto c = characters.next()) {
            appendUtf8(plain, *c);
        }
        target = plain;
    }
    return true;
}

} // namespace usage
