#include "usage/lines/JsonWalk.h"

#include "usage/lines/JsonNumber.h"

namespace usage {

using simdjson::ondemand::json_type;
using simdjson::ondemand::value;

namespace {

/// Far deeper than any conversation, and far from the end of the stack.
constexpr int deepest = 512;

/// Takes the string for good: left to the parser, one in front of a colon would pass for a key.
bool isSoundString(value value)
{
    const std::string_view token = scalarToken(value);
    return token.size() >= 2 && token.back() == '"' && escapesAreSound(token)
        && value.get_raw_json_string().error() == simdjson::SUCCESS;
}

} // namespace

bool isSound(value value, int depth)
{
    json_type type {};
    if (depth > deepest || value.type().get(type) != simdjson::SUCCESS) {
        return false;
    }
    switch (type) {
    case json_type::object:
        return eachField(
            value.get_object(), [depth](std::string_view, simdjson::ondemand::value inner) {
                return isSound(inner, depth + 1);
            });
    case json_type::array:
        return eachElement(value.get_array(),
            [depth](simdjson::ondemand::value inner) { return isSound(inner, depth + 1); });
    case json_type::string:
        return isSoundString(value);
    case json_type::number:
        return isJsonNumber(scalarToken(value));
    default:
        break;
    }
    const std::string_view token = scalarToken(value);
    return token == "null" || token == "true" || token == "false";
}

} // namespace usage
