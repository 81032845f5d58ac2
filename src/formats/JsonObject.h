#pragma once

#include "formats/TimePoint.h"

#include <optional>
#include <simdjson.h>
#include <string_view>

/// A small JSON text that is one object.
class JsonObject final {
public:
    /// Parses the text, with or without a byte-order mark.
    explicit JsonObject(std::string_view text);

    /// The object, which lives as long as this; nullopt if the text is malformed or something else.
    [[nodiscard]] const std::optional<simdjson::dom::object> &root() const { return m_root; }

private:
    simdjson::dom::parser m_parser;
    std::optional<simdjson::dom::object> m_root;
};

// A member of an object; nullopt if it is missing or of another type.

[[nodiscard]] std::optional<simdjson::dom::object> objectIn(
    const simdjson::dom::object &object, std::string_view key);
[[nodiscard]] std::optional<std::string_view> textIn(
    const simdjson::dom::object &object, std::string_view key);
/// Finite.
[[nodiscard]] std::optional<double> numberIn(
    const simdjson::dom::object &object, std::string_view key);
/// A text or a number, as TimeStamp reads them.
[[nodiscard]] std::optional<TimePoint> timeIn(
    const simdjson::dom::object &object, std::string_view key);
