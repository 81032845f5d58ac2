#pragma once

#include "core/IsoParser.h"
#include <QLatin1String>

/// How much of one rate-limit window is used.
struct Reading {
    double percent = 0;                ///< 0…100 as delivered, never clamped; always finite
    std::optional<TimePoint> resetsAt; ///< when the window begins anew

    bool operator==(const Reading &) const = default;
};

/// What a source calls the two members of a window.
struct WindowKeys {
    QLatin1String percent {"percent"};
    QLatin1String resetsAt {"resetsAt"};
};

/// Reads one window, an object of a number and an optional time stamp; nothing without the
/// percentage, which is the one thing that a window must have.
[[nodiscard]] std::optional<Reading> readReading(
    const QJsonValue &window, const IsoParser &moments, const WindowKeys &keys = {});
