#pragma once

#include "widget/views/theme/ThemeTable.h"

/// Sizes in points.
class Metrics final : public ThemeTable {
    Q_OBJECT
    THEME_ROW(double, radius, 22)       ///< corner radius of the panel
    THEME_ROW(double, compactBody, 234) ///< body width, compact layout
    THEME_ROW(double, wideBody, 314)    ///< body width, wide layout
    THEME_ROW(double, chartWidth, 308)
    THEME_ROW(double, chartHeight, 78)
    THEME_ROW(double, areaHeight, 92)
    THEME_ROW(double, sessionsMaxHeight, 300) ///< greatest height of the sessions list
    THEME_ROW(double, sessionText, 30)
    THEME_ROW(double, sessionPad, 5)
    THEME_ROW(double, sessionRow, 40)
    THEME_ROW(double, sessionFade, 20)
    /// By how much texts are larger than the views say, because the system's font is.
    THEME_ROW(double, textScale, fontScale())

private:
    static double fontScale();
};
