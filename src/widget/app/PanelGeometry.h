#pragma once

#include "widget/model/PersistedState.h"
#include <QList>
#include <QRectF>

/// Where the panel goes, as arithmetic alone: device-independent pixels, y downwards, the first
/// screen's coordinates as the window system tells them.
namespace PanelGeometry {

/// A screen, and what docks and bars leave of it.
struct Screen {
    QRectF frame;
    QRectF visible;
};

enum class Corner { TopLeft, TopRight, BottomLeft, BottomRight };

/// A corner of the panel that stays where it is while the panel grows and shrinks.
struct Anchor {
    Corner corner = Corner::TopLeft;
    QPointF point;
};

/// From which side a panel rises into its place.
enum class Side { Above, Below };

/// The screen on which a point lies, else the nearest one. There must be one.
[[nodiscard]] const Screen &screenAt(const QList<Screen> &screens, QPointF point);

/// Moved into the visible part of a screen, 6 points from its left and right edges. What is too
/// large keeps its top-left corner in sight.
[[nodiscard]] QRectF clamped(const QRectF &frame, const QRectF &visible);

/// How high a panel may be there.
[[nodiscard]] double greatestHeight(const QRectF &visible);

/// Where status items are as a rule: the right end of the bar that a screen has at its top or
/// bottom.
[[nodiscard]] QPointF barEnd(const Screen &screen);

/// Under the status item (which may be a point) and centred on it, 6 points below the screen's top;
/// above it when the item is in the lower half of the screen, where docks are at the bottom.
[[nodiscard]] QRectF dropFrame(const QRectF &item, const QRectF &visible, QSizeF size);

/// Whether a panel that hangs from this item rises from above or from below.
[[nodiscard]] Side dropSide(const QRectF &item, const QRectF &visible);

/// The free panel's place: where it was left, as long as a screen shows 60 x 40 points of it there,
/// else the bottom-right corner of the first screen. There must be a screen.
[[nodiscard]] QRectF placed(
    const std::optional<WindowSpot> &spot, QSizeF size, const QList<Screen> &screens);

/// What is remembered of a place: see WindowSpot.
[[nodiscard]] WindowSpot spot(const QRectF &frame, const Screen &first);

/// The corner that is nearest to a corner of the screen.
[[nodiscard]] Anchor nearestCorner(const QRectF &frame, const QRectF &visible);

/// The frame of a size whose corner is there.
[[nodiscard]] QRectF anchored(const Anchor &anchor, QSizeF size);

} // namespace PanelGeometry
