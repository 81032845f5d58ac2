#pragma once

#include "widget/views/theme/ThemeTable.h"
#include <algorithm>
#include <chrono>
#include <optional>

/// How long an ease-out curve of the views takes, in milliseconds as QML counts; 0 is no animation.
#define MOTION_EASE(name, time)                                                                    \
    Q_PROPERTY(int name READ name NOTIFY changed)                                                  \
public:                                                                                            \
    [[nodiscard]] int name() const                                                                 \
    {                                                                                              \
        return ease(time);                                                                         \
    }

/// Animation timings, and the one switch that turns every animation off. A change takes effect with
/// the next animation.
class Motion final : public ThemeTable {
    Q_OBJECT

public:
    using Time = std::chrono::milliseconds;

    /// A damped spring.
    struct Spring {
        Time response;
        double damping;
        Time blend;
    };

    static constexpr Time expandTime {280};
    static constexpr Time settleTime {200};
    static constexpr Time showTime {220};
    static constexpr Time hideTime {140};
    static constexpr double rise = 8; ///< points by which the widget rises into place when shown

    THEME_ROW(bool, reduced, s_reduced)
    /// This engine's views are out of sight: what changes in them is in its place at once.
    Q_PROPERTY(bool still MEMBER m_still NOTIFY changed)
    MOTION_EASE(hover, Time(120))
    MOTION_EASE(press, Time(80))
    MOTION_EASE(tab, Time(200))
    MOTION_EASE(expand, expandTime)
    MOTION_EASE(number, Time(350))
    MOTION_EASE(fill, Time(500))
    MOTION_EASE(tip, Time(160))
    MOTION_EASE(grow, Time(400)) ///< one element of a row
    /// Unfold and pop, which go on while motion is reduced.
    Q_PROPERTY(int transition READ transition NOTIFY changed)
    THEME_ROW(double, unfoldShift, 6)   ///< points above their place from which elements unfold
    THEME_ROW(double, popShift, 5)      ///< points by which popping elements move downwards
    THEME_ROW(double, pressScale, 0.94) ///< scale of a held button

    /// Turns every animation off or on.
    static void setReduced(bool reduced);
    [[nodiscard]] int transition() const { return m_still ? 0 : inQml(settleTime); }
    /// How long an ease-out curve takes that lasts so long.
    [[nodiscard]] int ease(Time time) const { return s_reduced || m_still ? 0 : inQml(time); }
    /// How an island opens and closes; nothing while motion is reduced.
    [[nodiscard]] static std::optional<Spring> island();
    /// How long element i of a row waits before it grows: 20 ms longer than the one before, but
    /// from the twentieth on all start together.
    Q_INVOKABLE [[nodiscard]] int growDelay(int i) const
    {
        return ease(std::min(i, 20) * Time(20));
    }
    /// How much of it element i of a row has grown, 0…1, so long after the first one began.
    Q_INVOKABLE [[nodiscard]] double growth(int i, double milliseconds) const;

private:
    [[nodiscard]] static int inQml(Time time) { return static_cast<int>(time.count()); }

    inline static bool s_reduced = false;
    bool m_still = false;
};
