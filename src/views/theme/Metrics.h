#pragma once

/// Sizes in points.
namespace Metrics {

inline constexpr double radius = 22;       ///< corner radius of the panel
inline constexpr double compactBody = 234; ///< body width, compact layout
inline constexpr double wideBody = 314;    ///< body width, wide layout
inline constexpr double chartWidth = 308;
inline constexpr double chartHeight = 78;
inline constexpr double areaHeight = 92;
inline constexpr double sessionsMaxHeight = 300; ///< greatest height of the sessions list
inline constexpr double sessionText = 30;
inline constexpr double sessionPad = 5;
inline constexpr double sessionRow = 40;
inline constexpr double sessionFade = 20;

} // namespace Metrics
