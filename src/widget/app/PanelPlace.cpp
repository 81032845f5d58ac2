#include "widget/app/PanelPlace.h"

#include "widget/platform/DesktopWatch.h"
#include <algorithm>
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace {

/// What docks and bars leave of a screen. Of one among several Qt tells only the whole.
QRectF visiblePart(const QScreen &screen, const DesktopWatch &desktop)
{
    const QRect frame = screen.geometry();
    const double scale = screen.devicePixelRatio();
    const QRect native(frame.topLeft(), frame.size() * scale); // only sizes are scaled
    const QRect cleared = desktop.cleared(native);
    const QPointF corner = QPointF(cleared.topLeft() - native.topLeft()) / scale;
    return QRectF(frame.topLeft() + corner, QSizeF(cleared.size()) / scale)
        .intersected(screen.availableGeometry());
}

} // namespace

PanelPlace::PanelPlace(const DesktopWatch &desktop, StatusItemFrame statusItem)
    : m_desktop(desktop)
    , m_statusItem(std::move(statusItem))
{
    connect(&desktop, &DesktopWatch::barsChanged, this, &PanelPlace::screensChanged);
    const auto watch = [this](QScreen *screen) {
        connect(screen, &QScreen::availableGeometryChanged, this, &PanelPlace::screensChanged);
    };
    std::ranges::for_each(QGuiApplication::screens(), watch);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, watch);
    for (const auto change : {&QGuiApplication::screenAdded, &QGuiApplication::screenRemoved,
             &QGuiApplication::primaryScreenChanged}) {
        connect(qGuiApp, change, this, &PanelPlace::screensChanged);
    }
}

/// The first screen first.
QList<PanelGeometry::Screen> PanelPlace::screens() const
{
    QList<PanelGeometry::Screen> all;
    for (const QScreen *screen : QGuiApplication::screens()) {
        all.append({screen->geometry(), visiblePart(*screen, m_desktop)});
    }
    return all;
}

QRectF PanelPlace::visibleAround(QPointF point) const
{
    return PanelGeometry::screenAt(screens(), point).visible;
}

/// Where a tray does not tell where its icons are, the last click on the item does.
QRectF PanelPlace::itemFrame()
{
    if (const QRect frame = m_statusItem().value_or(QRect()); !frame.isEmpty()) {
        m_item = frame;
    }
    if (!m_item.isEmpty()) {
        return m_item;
    }
    const QPointF place = m_pointer
        ? QPointF(*m_pointer)
        : PanelGeometry::barEnd(PanelGeometry::screenAt(screens(), m_shownFrom));
    return {place, QSizeF(1, 1)};
}

QRectF PanelPlace::hanging(QSizeF size)
{
    const QRectF item = itemFrame();
    return PanelGeometry::dropFrame(item, visibleAround(item.center()), size);
}

QRectF PanelPlace::standing(QSizeF size) const
{
    return PanelGeometry::placed(m_spot, size, screens());
}

QRectF PanelPlace::inSight(const QRectF &frame, QSizeF size) const
{
    const QList<PanelGeometry::Screen> all = screens();
    return PanelGeometry::placed(PanelGeometry::spot(frame, all.constFirst()), size, all);
}

QRectF PanelPlace::resized(const QRectF &frame, QSizeF size)
{
    const QRectF visible = visibleAround(frame.center());
    if (!m_anchor) {
        m_anchor = PanelGeometry::nearestCorner(frame, visible);
    }
    return PanelGeometry::clamped(PanelGeometry::anchored(*m_anchor, size), visible);
}

double PanelPlace::room(QPointF point) const
{
    return PanelGeometry::greatestHeight(visibleAround(point));
}

bool PanelPlace::hangsFromAbove()
{
    const QRectF item = itemFrame();
    return PanelGeometry::dropSide(item, visibleAround(item.center()))
        == PanelGeometry::Side::Above;
}

void PanelPlace::noteClick()
{
    m_pointer = QCursor::pos();
}

void PanelPlace::noteShown()
{
    m_shownFrom = QCursor::pos();
}

void PanelPlace::takeSpot(const QRectF &frame)
{
    m_spot = PanelGeometry::spot(frame, screens().constFirst());
}

bool PanelPlace::moveSpot(const QRectF &before, const QRectF &frame)
{
    const PanelGeometry::Screen first = screens().constFirst();
    if (m_spot != PanelGeometry::spot(before, first)) {
        return false;
    }
    m_spot = PanelGeometry::spot(frame, first);
    return true;
}

#include "moc_PanelPlace.cpp"
