#pragma once

#include "views/theme/ThemeTable.h"
#include <algorithm>
#include <chrono>
#include <optional>

/// Animation timings, and the one switch that turns every animation off.
///
/// QML counts in milliseconds. 0 is no animation: that is what every `ease` is while motion is
/// reduced, so a change of the switch takes effect with the next animation.
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
    THEME_ROW(int, hover, ease(Time(120)))
    THEME_ROW(int, press, ease(Time(80)))
    THEME_ROW(int, tab, ease(Time(200)))
    THEME_ROW(int, expand, ease(expandTime))
    THEME_ROW(int, number, ease(Time(350)))
    THEME_ROW(int, fill, ease(Time(500)))
    THEME_ROW(int, tip, ease(Time(160)))
    THEME_ROW(int, grow, ease(Time(400)))         ///< one element of a row
    THEME_ROW(int, transition, inQml(settleTime)) ///< unfold and pop, which are never switched off
    THEME_ROW(double, unfoldShift, 6)   ///< points above their place from which elements unfold
    THEME_ROW(double, popShift, 5)      ///< points by which popping elements move downwards
    THEME_ROW(double, pressScale, 0.94) ///< scale of a held button

    /// Turns every animation off or on.
    static void setReduced(bool reduced);
    /// How long an ease-out curve takes that lasts so long.
    [[nodiscard]] static int ease(Time time) { return reduced() ? 0 : inQml(time); }
    /// How an island opens and closes; nothing while motion is reduced.
    [[nodiscard]] static std::optional<Spring> island();
    /// How long element i of a row waits before it grows: 20 ms longer than the one before, but
    /// from the twentieth on all start together.
    Q_INVOKABLE [[nodiscard]] static int growDelay(int i)
    {
        return ease(std::min(i, 20) * Time(20));
    }
    /// How much of it element i of a row has grown, 0…1, so long after the first one began.
    Q_INVOKABLE [[nodiscard]] static double growth(int i, double milliseconds);

private:
    [[nodiscard]] static int inQml(Time time) { return static_cast<int>(time.count()); }

    inline static bool s_reduced = false;
};
