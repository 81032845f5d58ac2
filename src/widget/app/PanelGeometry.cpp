#include "widget/app/PanelGeometry.h"

#include <algorithm>
#include <cmath>

namespace PanelGeometry {

namespace {

constexpr double sideInset = 6;    ///< between the panel and the left and right edges of a screen
constexpr double dropInset = 6;    ///< between the screen's edge and a panel that hangs from it
constexpr double cornerInset = 12; ///< between a free panel and the corner it starts in
constexpr double thickestBar = 64;
constexpr QSizeF leastOverlap(60, 40);

double distance(const QRectF &rect, QPointF point)
{
    const double x = std::max({rect.left() - point.x(), point.x() - rect.right(), 0.0});
    const double y = std::max({rect.top() - point.y(), point.y() - rect.bottom(), 0.0});
    return std::hypot(x, y);
}

bool showsEnough(const Screen &screen, const QRectF &frame)
{
    const QRectF overlap = screen.visible.intersected(frame);
    return overlap.width() >= leastOverlap.width() && overlap.height() >= leastOverlap.height();
}

} // namespace

const Screen &screenAt(const QList<Screen> &screens, QPointF point)
{
    Q_ASSERT(!screens.isEmpty());
    return *std::ranges::min_element(
        screens, {}, [point](const Screen &screen) { return distance(screen.frame, point); });
}

QRectF clamped(const QRectF &frame, const QRectF &visible)
{
    const QRectF room = visible.adjusted(sideInset, 0, -sideInset, 0);
    const double x = std::max(std::min(frame.x(), room.right() - frame.width()), room.left());
    const double y = std::max(std::min(frame.y(), room.bottom() - frame.height()), room.top());
    return {QPointF(std::round(x), std::round(y)), frame.size()};
}

double greatestHeight(const QRectF &visible)
{
    return visible.height() - 2 * dropInset;
}

QPointF barEnd(const Screen &screen)
{
    const bool atBottom = screen.visible.bottom() < screen.frame.bottom()
        && screen.visible.top() <= screen.frame.top();
    // The edges themselves belong to the screens beside and below.
    return {screen.frame.right() - 1, atBottom ? screen.frame.bottom() - 1 : screen.frame.top()};
}

Side dropSide(const QRectF &item, const QRectF &visible)
{
    return item.center().y() > visible.center().y() ? Side::Below : Side::Above;
}

QRectF dropFrame(const QRectF &item, const QRectF &visible, QSizeF size)
{
    const double x = item.center().x() - size.width() / 2;
    // With several screens the window system may not tell what bars leave of them; but the item is
    // on one.
    const auto isInBar = [&item](double edge) {
        return std::abs(item.center().y() - edge) < thickestBar && item.height() > 1;
    };
    const double top =
        isInBar(visible.top()) ? std::max(visible.top(), item.bottom()) : visible.top();
    const double bottom =
        isInBar(visible.bottom()) ? std::min(visible.bottom(), item.top()) : visible.bottom();
    const double y = dropSide(item, visible) == Side::Above ? top + dropInset
                                                            : bottom - dropInset - size.height();
    return clamped({QPointF(x, y), size}, visible);
}

QRectF placed(const std::optional<WindowSpot> &spot, QSizeF size, const QList<Screen> &screens)
{
    Q_ASSERT(!screens.isEmpty());
    const Screen &first = screens.first();
    if (spot) {
        const QRectF wanted(first.frame.topLeft() + QPointF(spot->left, spot->top), size);
        const auto screen = std::ranges::find_if(
            screens, [&wanted](const Screen &one) { return showsEnough(one, wanted); });
        if (screen != screens.end()) {
            return clamped(wanted, screen->visible);
        }
    }
    const QPointF corner = first.visible.bottomRight() - QPointF(cornerInset, cornerInset);
    return clamped({corner - QPointF(size.width(), size.height()), size}, first.visible);
}

WindowSpot spot(const QRectF &frame, const Screen &first)
{
    const QPointF corner = frame.topLeft() - first.frame.topLeft();
    return {.left = corner.x(), .top = corner.y()};
}

Anchor nearestCorner(const QRectF &frame, const QRectF &visible)
{
    const bool right = visible.right() - frame.right() < frame.left() - visible.left();
    const bool bottom = visible.bottom() - frame.bottom() < frame.top() - visible.top();
    if (bottom) {
        return right ? Anchor {Corner::BottomRight, frame.bottomRight()}
                     : Anchor {Corner::BottomLeft, frame.bottomLeft()};
    }
    return right ? Anchor {Corner::TopRight, frame.topRight()}
                 : Anchor {Corner::TopLeft, frame.topLeft()};
}

QRectF anchored(const Anchor &anchor, QSizeF size)
{
    QRectF frame({}, size);
    switch (anchor.corner) {
    case Corner::TopLeft:
        frame.moveTopLeft(anchor.point);
        break;
    case Corner::TopRight:
        frame.moveTopRight(anchor.point);
        break;
    case Corner::BottomLeft:
        frame.moveBottomLeft(anchor.point);
        break;
    case Corner::BottomRight:
        frame.moveBottomRight(anchor.point);
        break;
    }
    return frame;
}

} // namespace PanelGeometry
