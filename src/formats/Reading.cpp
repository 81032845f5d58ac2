#include "formats/Reading.h"

std::optional<Reading> readReading(
    const simdjson::dom::object &source, std::string_view key, const WindowKeys &keys)
{
    const auto window = objectIn(source, key);
    const auto percent = window ? numberIn(*window, keys.percent) : std::nullopt;
    return percent ? std::optional(Reading {*percent, timeIn(*window, keys.resetsAt)})
                   : std::nullopt;
}
