#pragma once

#include <QRect>
#include <vector>

class XServer;

/// A strip along an edge of the X server's whole screen that a window keeps clear of others, for
/// itself. All in the server's own pixels.
struct ScreenBar {
    Qt::Edge edge = Qt::TopEdge;
    QRect strip;

    bool operator==(const ScreenBar &) const = default;
};

/// What the windows that the window manager knows keep clear. Tells of changes of each such window
/// from now on.
[[nodiscard]] std::vector<ScreenBar> screenBars(const XServer &server);

/// What such strips leave of a monitor.
[[nodiscard]] QRect clearedOf(const std::vector<ScreenBar> &bars, const QRect &monitor);
