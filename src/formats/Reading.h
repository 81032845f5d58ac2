#pragma once

#include "formats/JsonObject.h"

/// How much of one rate-limit window is used.
struct Reading {
    double percent = 0;                ///< 0…100 as delivered, never clamped; always finite
    std::optional<TimePoint> resetsAt; ///< when the window begins anew

    bool operator==(const Reading &) const = default;
};

/// What a source calls the two members of a window.
struct WindowKeys {
    std::string_view percent = "percent";
    std::string_view resetsAt = "resetsAt";
};

/// Reads the window that `source` holds under `key`: an object of a number and an optional time
/// stamp. Returns nullopt without the percentage, the one thing that a window must have.
[[nodiscard]] std::optional<Reading> readReading(
    const simdjson::dom::object &source, std::string_view key, const WindowKeys &keys = {});
