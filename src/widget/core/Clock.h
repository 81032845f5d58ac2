#pragma once

#include "formats/TimePoint.h"

/// Tells the time; injected wherever a rule depends on it, so that a test can live a day in a
/// moment.
class Clock {
public:
    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    [[nodiscard]] virtual TimePoint now() const = 0;
};

/// The computer's own clock.
class SystemClock final : public Clock {
public:
    [[nodiscard]] TimePoint now() const override;
};
