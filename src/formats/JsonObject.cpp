#include "formats/JsonObject.h"

#include "formats/TimeStamp.h"

#include <cmath>

namespace dom = simdjson::dom;

namespace {

std::string_view withoutMark(std::string_view text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    return text.starts_with(byteOrderMark) ? text.substr(byteOrderMark.size()) : text;
}

template <typename Type>
std::optional<Type> memberOf(const dom::object &object, std::string_view key)
{
    Type value {};
    return object[key].get(value) == simdjson::SUCCESS ? std::optional(value) : std::nullopt;
}

} // namespace

JsonObject::JsonObject(std::string_view text)
{
    const std::string_view bytes = withoutMark(text);
    dom::object object;
    if (m_parser.parse(bytes.data(), bytes.size()).get(object) == simdjson::SUCCESS) {
        m_root = object;
    }
}

std::optional<dom::object> objectIn(const dom::object &object, std::string_view key)
{
    return memberOf<dom::object>(object, key);
}

std::optional<std::string_view> textIn(const dom::object &object, std::string_view key)
{
    return memberOf<std::string_view>(object, key);
}

std::optional<double> numberIn(const dom::object &object, std::string_view key)
{
    const auto number = memberOf<double>(object, key);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<TimePoint> timeIn(const dom::object &object, std::string_view key)
{
    if (const auto text = textIn(object, key)) {
        return TimeStamp::parse(*text);
    }
    const auto number = numberIn(object, key);
    return number ? TimeStamp::of(*number) : std::nullopt;
}
