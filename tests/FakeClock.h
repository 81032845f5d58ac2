#pragma once

#include "widget/core/Clock.h"

/// A clock that stands until it is moved.
class FakeClock final : public Clock {
public:
    explicit FakeClock(TimePoint start)
        : m_now(start)
    {
    }

    [[nodiscard]] TimePoint now() const override { return m_now; }
    void advance(std::chrono::milliseconds span) { m_now += span; }

private:
    TimePoint m_now;
};
