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

/// The first screen first.
QList<PanelGeometry::Screen> screens()
{
    QList<PanelGeometry::Screen> all;
    for (const QScreen *screen : QGuiApplication::screens()) {
        all.append({screen->geometry(), screen->availableGeometry()});
    }
    return all;
}

QRectF visibleAround(QPointF point)
{
    return PanelGeometry::screenAt(screens(), point).visible;
}

bool isSame(QSizeF one, QSizeF other)
{
    constexpr double least = 0.5;
    return std::abs(one.width() - other.width()) < least
        && std::abs(one.height() - other.height()) < least;
}

} // namespace

void WidgetPanel::watchSurroundings()
{
    DesktopWatch &desktop = m_around.desktop;
    connect(&desktop, &DesktopWatch::pressed, this, &WidgetPanel::pressedSomewhere);
    connect(&desktop, &DesktopWatch::desktopSwitched, this, &WidgetPanel::spaceChanged);
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
        : PanelGeometry::barEnd(PanelGeometry::screenAt(screens(), QCursor::pos()));
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

void WidgetPanel::place()
{
    m_anchor.reset();
    m_mover.jump(PanelGeometry::placed(m_windowSpot, m_panel.contentSize(), screens()));
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
    const QRectF wanted = mode() == ViewMode::Icon
        ? dropFrame(frame.size())
        : PanelGeometry::placed(PanelGeometry::spot(frame, all.constFirst()), frame.size(), all);
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
