#include "indexer/JsonWalk.h"

#include "indexer/JsonNumber.h"

namespace indexer {

using simdjson::ondemand::json_type;
using simdjson::ondemand::value;

namespace {

/// Far deeper than any conversation, and far from the end of the stack.
constexpr int deepest = 512;

} // namespace

// NOLINTNEXTLINE(misc-no-recursion): JSON nests, and the depth is limited.
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
        return !stringToken(value).empty();
    case json_type::number:
        return isJsonNumber(scalarToken(value));
    default:
        break;
    }
    const std::string_view token = scalarToken(value);
    return token == "null" || token == "true" || token == "false";
}

std::string_view stringToken(value &value)
{
    const std::string_view token = scalarToken(value);
    if (token.size() < 2 || token.front() != '"' || token.back() != '"'
        || !escapesAreSound(token)) {
        return {};
    }
    return token;
}

} // namespace indexer
