#pragma once

#include "formats/TimePoint.h"
#include "require.h"

#include <cmath>
#include <optional>
#include <QByteArray>

class Strings;

// A target of the widget is a source with one tryInput. It runs in Berlin, in a home of its own
// that holds the translations as they are delivered.

/// Reads an input as the widget would, and requires what must hold of the result.
void tryInput(const QByteArray &bytes);

/// Where the widget's clock stands.
inline constexpr TimePoint now =
    std::chrono::sys_days {std::chrono::year {2026} / std::chrono::November / 21};

/// The English texts.
[[nodiscard]] const Strings &strings();

/// What no calendar arithmetic can overflow.
[[nodiscard]] inline bool isSane(const std::optional<TimePoint> &moment)
{
    constexpr double farthest = 6e18;
    return !moment || std::abs(static_cast<double>(moment->time_since_epoch().count())) <= farthest;
}

/// A number that was told.
[[nodiscard]] inline bool isSane(const std::optional<double> &number)
{
    return !number || std::isfinite(*number);
}
