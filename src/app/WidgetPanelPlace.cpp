// The part of WidgetPanel that is about where it stands, and what goes on around it.

#include "app/WidgetPanel.h"
#include "platform/DesktopWatch.h"
#include "views/theme/Motion.h"
#include <cmath>
#include <QApplication>
#include <QCursor>
#include <QScreen>

using namespace std::chrono_literals;

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

bool isSame(QSizeF one, QSizeF other)
{
    constexpr double least = 0.5;
    return std::abs(one.width() - other.width()) < least
        && std::abs(one.height() - other.height()) < least;
}

} // namespace

/// The first screen first.
QList<PanelGeometry::Screen> WidgetPanel::screens() const
{
    QList<PanelGeometry::Screen> all;
    for (const QScreen *screen : QGuiApplication::screens()) {
        all.append({screen->geometry(), visiblePart(*screen, m_around.desktop)});
    }
    return all;
}

QRectF WidgetPanel::visibleAround(QPointF point) const
{
    return PanelGeometry::screenAt(screens(), point).visible;
}

void WidgetPanel::watchSurroundings()
{
    DesktopWatch &desktop = m_around.desktop;
    connect(&desktop, &DesktopWatch::pressed, this, &WidgetPanel::pressedSomewhere);
    connect(&desktop, &DesktopWatch::desktopSwitched, this, &WidgetPanel::spaceChanged);
    connect(&desktop, &DesktopWatch::barsChanged, this, &WidgetPanel::fit);
    connect(&desktop, &DesktopWatch::compositedChanged, this,
        [this, &desktop] { m_panel.setTranslucent(desktop.composited()); });

    connect(
        &m_panel, &QWindow::activeChanged, this, &WidgetPanel::focusChanged, Qt::QueuedConnection);

    const auto watch = [this](QScreen *screen) {
        connect(screen, &QScreen::availableGeometryChanged, this, &WidgetPanel::fit);
    };
    std::ranges::for_each(QGuiApplication::screens(), watch);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, watch);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &WidgetPanel::fit);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &WidgetPanel::fit);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &WidgetPanel::fit);
}

/// Where a tray does not tell where its icons are, the last click on the item does.
QRectF WidgetPanel::statusFrame()
{
    if (const QRect frame = m_around.statusItem().value_or(QRect()); !frame.isEmpty()) {
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

QRectF WidgetPanel::dropFrame(QSizeF size)
{
    const QRectF item = statusFrame();
    return PanelGeometry::dropFrame(item, visibleAround(item.center()), size);
}

/// What hangs comes from where it hangs, what stands from below.
double WidgetPanel::rise()
{
    using PanelGeometry::Side;
    const QRectF item = statusFrame();
    const bool above = mode() == ViewMode::Icon
        && PanelGeometry::dropSide(item, visibleAround(item.center())) == Side::Above;
    return above ? -Motion::rise : Motion::rise;
}

/// The panel is at most as high as the screen has room where this is.
void WidgetPanel::makeFit(QPointF place)
{
    m_panel.setRoom(PanelGeometry::greatestHeight(visibleAround(place)));
}

void WidgetPanel::place()
{
    m_anchor.reset();
    const auto placed = [this] {
        return PanelGeometry::placed(m_windowSpot, m_panel.contentSize(), screens());
    };
    makeFit(placed().center());
    m_mover.jump(placed());
}

void WidgetPanel::takeSpot()
{
    m_windowSpot = PanelGeometry::spot(m_panel.frame(), screens().constFirst());
}

QRectF WidgetPanel::resized(QSizeF size)
{
    if (mode() == ViewMode::Icon) {
        return dropFrame(size);
    }
    const QRectF frame = m_mover.frameTarget().value_or(m_panel.frame());
    const QRectF visible = visibleAround(frame.center());
    if (!m_anchor) {
        m_anchor = PanelGeometry::nearestCorner(frame, visible);
    }
    return PanelGeometry::clamped(PanelGeometry::anchored(*m_anchor, size), visible);
}

void WidgetPanel::applySize(const QSizeF &size)
{
    if (isSame(size, m_mover.frameTarget().value_or(m_panel.frame()).size())) {
        return;
    }
    const QRectF before = m_mover.frameTarget().value_or(m_panel.frame());
    const QRectF frame = resized(size);
    // Another size may put the corner elsewhere. A spot that no screen shows stays remembered.
    const PanelGeometry::Screen first = screens().constFirst();
    if (mode() == ViewMode::Window && m_windowSpot == PanelGeometry::spot(before, first)) {
        m_windowSpot = PanelGeometry::spot(frame, first);
        Q_EMIT moved();
    }
    if (!m_panel.isShown()) {
        m_mover.jump(frame);
        return;
    }
    const bool toggled = !hasPassed(300ms, m_lastToggle, m_clock.now());
    m_mover.glide(frame, std::nullopt, toggled ? Motion::expandTime : Motion::settleTime);
}

/// The screens have changed: the panel stays in sight.
void WidgetPanel::fit()
{
    if (QGuiApplication::screens().isEmpty()) {
        return;
    }
    const QRectF frame = m_mover.frameTarget().value_or(m_panel.frame());
    const QList<PanelGeometry::Screen> all = screens();
    const auto placed = [&](QSizeF size) {
        return mode() == ViewMode::Icon
            ? dropFrame(size)
            : PanelGeometry::placed(PanelGeometry::spot(frame, all.constFirst()), size, all);
    };
    makeFit(placed(frame.size()).center());
    const QRectF wanted = placed(m_panel.contentSize());
    if (wanted != frame) {
        m_anchor.reset();
        m_mover.jump(wanted);
    }
}

void WidgetPanel::followTray()
{
    const bool alone = !m_around.statusItem();
    if (alone != m_alone) {
        stand(alone);
        m_wantsVisible ? showWidget() : orderOut();
    }
}

void WidgetPanel::spaceChanged()
{
    if (mode() == ViewMode::Icon && m_wantsVisible) {
        hideWidget();
    }
}

void WidgetPanel::watchOutsideClicks()
{
    if (!m_outsideClicks) {
        m_around.desktop.watchPresses(true);
        m_outsideClicks = m_clock.now();
    }
}

void WidgetPanel::stopWatchingOutsideClicks()
{
    if (std::exchange(m_outsideClicks, std::nullopt)) {
        m_around.desktop.watchPresses(false);
    }
}

void WidgetPanel::pressedSomewhere()
{
    // What opened it may still be under way; and what lies outside is somebody else's window.
    if (!m_outsideClicks || !hasPassed(100ms, *m_outsideClicks, m_clock.now())
        || QGuiApplication::topLevelAt(QCursor::pos())) {
        return;
    }
    m_hiddenByPress.extend(m_clock.now(), 500ms);
    hideWidget();
}

/// Where presses in other programs are not told of, the keyboard's going there is.
void WidgetPanel::focusChanged()
{
    const bool toldOfPresses = QGuiApplication::platformName() == QLatin1String("xcb")
        && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!toldOfPresses && m_outsideClicks && !m_panel.isActive() && !QGuiApplication::focusWindow()
        && !QApplication::activePopupWidget()) {
        hideWidget();
    }
}
