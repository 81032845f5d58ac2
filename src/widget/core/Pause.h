#pragma once

#include "formats/TimePoint.h"
#include <algorithm>

/// Whether a span has gone by since a moment. A clock that was set back would make it last longer
/// than it should, so a moment that lies ahead counts as gone by.
[[nodiscard]] constexpr bool hasPassed(Seconds span, TimePoint since, TimePoint now)
{
    return now < since || elapsed(since, now) >= span;
}

/// A time in which something is not done. When the clock is set back it begins anew, so that it
/// neither ends at once nor lasts longer than it should.
class Pause final {
public:
    [[nodiscard]] bool lasts(TimePoint now)
    {
        if (now < m_from) {
            m_until = now + (m_until - m_from);
            m_from = now;
        }
        return now < m_until;
    }

    /// Lasts for this long from now on, unless it lasts longer already.
    void extend(TimePoint now, std::chrono::milliseconds length)
    {
        m_until = lasts(now) ? std::max(m_until, now + length) : now + length;
        m_from = now;
    }

private:
    TimePoint m_from {};
    TimePoint m_until {};
};
