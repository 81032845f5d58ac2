#include "widget/app/WidgetPanel.h"

#include "widget/platform/DesktopWatch.h"
#include "widget/views/PanelActions.h"
#include "widget/views/theme/Motion.h"
#include <cmath>
#include <QGuiApplication>

using namespace std::chrono_literals;

namespace {

bool isSame(QSizeF one, QSizeF other)
{
    constexpr double least = 0.5;
    return std::abs(one.width() - other.width()) < least
        && std::abs(one.height() - other.height()) < least;
}

} // namespace

WidgetPanel::WidgetPanel(Surroundings surroundings, Dashboard &dashboard, PanelActions &actions)
    : m_around(std::move(surroundings))
    , m_model(m_around.model)
    , m_clock(m_around.clock)
    , m_panel(dashboard, actions)
    , m_mover(m_panel, m_clock)
    , m_place(m_around.desktop, m_around.statusItem)
    , m_outsidePresses(m_around.desktop, m_clock, m_panel)
{
    watchPanel();
    watchSurroundings();
    connect(&actions, &PanelActions::moveRequested, this, [this] {
        if (mode() == ViewMode::Window) {
            m_panel.drag();
        }
    });
}

void WidgetPanel::watchPanel()
{
    connect(&m_panel, &FloatingPanel::contentResized, this, &WidgetPanel::applySize);
    connect(&m_panel, &FloatingPanel::closeRequested, this, &WidgetPanel::hideWidget);
    connect(&m_panel, &FloatingPanel::contextClicked, this, &WidgetPanel::contextClicked);
    connect(&m_panel, &FloatingPanel::escapePressed, this, [this] {
        if (mode() == ViewMode::Icon) {
            hideWidget();
        }
    });
    connect(&m_panel, &FloatingPanel::moved, this, [this] {
        m_place.releaseCorner();
        if (mode() == ViewMode::Window) {
            m_place.takeSpot(m_panel.frame());
            Q_EMIT moved();
        }
    });
    connect(&m_panel, &QWindow::visibilityChanged, this, [this](QWindow::Visibility visibility) {
        if (visibility == QWindow::Windowed && mode() == ViewMode::Window
            && !std::exchange(m_wantsVisible, true)) {
            m_model.setRevealed(true); // brought back by the window manager
            Q_EMIT changed();
        }
    });
    connect(&m_mover, &PanelMover::gliding, this,
        [this](std::chrono::milliseconds length) { m_quiet.extend(m_clock.now(), length); });
}

void WidgetPanel::watchSurroundings()
{
    DesktopWatch &desktop = m_around.desktop;
    connect(&desktop, &DesktopWatch::desktopSwitched, this, &WidgetPanel::spaceChanged);
    connect(&desktop, &DesktopWatch::compositedChanged, this,
        [this, &desktop] { m_panel.setTranslucent(desktop.composited()); });
    connect(&m_place, &PanelPlace::screensChanged, this, &WidgetPanel::fit);
    connect(&m_outsidePresses, &OutsidePresses::turnedAway, this, &WidgetPanel::hideWidget);
}

bool WidgetPanel::isBusy()
{
    m_mover.finishIfOverdue();
    return gliding() || m_quiet.lasts(m_clock.now());
}

void WidgetPanel::follow()
{
    if (!m_panel.isShown() || !m_wantsVisible) {
        return;
    }
    makeFit((mode() == ViewMode::Icon ? m_place.itemFrame() : m_panel.frame()).center());
    if (mode() == ViewMode::Window || !m_place.hasItem()) {
        return;
    }
    if (const QRectF next = m_place.hanging(m_panel.frame().size()); next != m_panel.frame()) {
        m_mover.glide(next, std::nullopt, Motion::settleTime);
    }
}

ViewMode WidgetPanel::mode() const
{
    return m_alone ? ViewMode::Window : m_model.mode();
}

bool WidgetPanel::panelOnTop() const
{
    return m_panel.isShown() && !m_around.desktop.isCovered(static_cast<quint32>(m_panel.winId()));
}

void WidgetPanel::restore(bool wantsVisible, const std::optional<WindowSpot> &spot)
{
    m_wantsVisible = wantsVisible;
    m_place.restore(spot);
}

void WidgetPanel::appear()
{
    m_panel.setTranslucent(m_around.desktop.composited());
    m_panel.settle();
    stand(!m_place.hasItem());
    if (mode() == ViewMode::Window) {
        m_wantsVisible ? showWidget() : orderOut();
        return;
    }
    // A tray takes a moment to give the item its place.
    m_around.sleeper(250ms, [this, ticket = m_visibilityTicket] {
        if (ticket == m_visibilityTicket && m_wantsVisible) {
            showWidget();
        }
    });
}

void WidgetPanel::showWidget()
{
    m_wantsVisible = true;
    applyLevel();
    if (!m_panel.isShown()) {
        m_panel.settle();
    }
    if (mode() == ViewMode::Icon) {
        if (!m_panel.isShown()) {
            m_place.noteShown();
            makeFit(m_place.itemFrame().center());
            m_mover.jump(m_place.hanging(m_panel.contentSize()));
        }
        m_outsidePresses.watchOutsideClicks();
    }
    present();
    Q_EMIT presented();
    Q_EMIT changed();
}

void WidgetPanel::present()
{
    m_quiet.extend(m_clock.now(), 900ms);
    const QRectF target = frame();
    if (!m_panel.isShown()) {
        m_model.conceal();
        if (!Motion::reduced()) {
            m_mover.setOpacity(0);
            // What hangs comes from where it hangs, what stands from below.
            const bool above = mode() == ViewMode::Icon && m_place.hangsFromAbove();
            m_mover.jump(target.translated(0, above ? -Motion::rise : Motion::rise));
        }
    }
    m_panel.orderFront();
    m_mover.glide(target, 1, Motion::showTime);
    m_around.sleeper(70ms, [this, ticket = m_visibilityTicket] {
        if (ticket == m_visibilityTicket) {
            m_model.setRevealed(true);
        }
    });
}

void WidgetPanel::hideWidget()
{
    m_wantsVisible = false;
    m_outsidePresses.stopWatchingOutsideClicks();
    ++m_visibilityTicket;
    m_model.hover().setX(std::nullopt);
    Q_EMIT changed();
    if (!m_panel.isShown()) {
        if (!m_alone) {
            m_panel.orderOut(); // it may be a minimised window
        }
        return;
    }
    const auto gone = [this, ticket = m_visibilityTicket] {
        if (ticket == m_visibilityTicket && !m_wantsVisible) {
            orderOut();
            m_mover.setOpacity(1);
            m_model.conceal();
        }
    };
    if (Motion::reduced() || m_alone) { // the window manager has an animation of its own
        gone();
    } else {
        m_mover.fadeOut(Motion::hideTime, gone);
    }
}

void WidgetPanel::orderOut()
{
    if (m_alone) {
        m_panel.showMinimized(); // where else could the user find it again?
    } else {
        m_panel.orderOut();
    }
}

void WidgetPanel::toggleWidget()
{
    const bool inSight = mode() == ViewMode::Icon || panelOnTop();
    if (m_wantsVisible && inSight) {
        hideWidget();
        return;
    }
    if (m_wantsVisible) {
        m_panel.orderOut(); // it comes to the front, and to this desktop
    }
    showWidget();
}

void WidgetPanel::statusClicked()
{
    m_place.noteClick();
    if (!m_outsidePresses.wasJustNow()) {
        toggleWidget();
    }
}

void WidgetPanel::setView(ViewMode mode)
{
    if (mode == m_model.mode()) {
        return;
    }
    m_wantsVisible = false;
    m_model.setMode(mode);
    stand(m_alone);
    showWidget();
}

/// Leaves the screen, to come back as the mode wants it to stand.
void WidgetPanel::stand(bool alone)
{
    m_alone = alone;
    m_outsidePresses.stopWatchingOutsideClicks();
    ++m_visibilityTicket;
    m_panel.orderOut();
    m_mover.setOpacity(1);
    m_model.conceal();
    m_place.releaseCorner();
    applyLevel();
    if (mode() == ViewMode::Window) {
        makeFit(m_place.standing(m_panel.contentSize()).center());
        m_mover.jump(m_place.standing(m_panel.contentSize()));
    }
}

void WidgetPanel::applyLevel()
{
    using Level = FloatingPanel::Level;
    if (mode() == ViewMode::Icon) {
        m_panel.setLevel(Level::StatusBar);
    } else {
        m_panel.setLevel(m_model.topmost() ? Level::Floating : Level::Normal);
    }
}

/// The panel is at most as high as the screen has room where this is.
void WidgetPanel::makeFit(QPointF place)
{
    m_panel.setRoom(m_place.room(place));
}

QRectF WidgetPanel::frame() const
{
    return m_mover.frameTarget().value_or(m_panel.frame());
}

void WidgetPanel::applySize(const QSizeF &size)
{
    const QRectF before = frame();
    if (isSame(size, before.size())) {
        return;
    }
    const bool hangs = mode() == ViewMode::Icon;
    const QRectF after = hangs ? m_place.hanging(size) : m_place.resized(before, size);
    if (!hangs && m_place.moveSpot(before, after)) {
        Q_EMIT moved();
    }
    if (!m_panel.isShown()) {
        m_mover.jump(after);
        return;
    }
    const bool toggled = !hasPassed(300ms, m_lastToggle, m_clock.now());
    m_mover.glide(after, std::nullopt, toggled ? Motion::expandTime : Motion::settleTime);
}

/// The screens have changed: the panel stays in sight.
void WidgetPanel::fit()
{
    if (QGuiApplication::screens().isEmpty()) {
        return;
    }
    const QRectF before = frame();
    const auto placed = [&](QSizeF size) {
        return mode() == ViewMode::Icon ? m_place.hanging(size) : m_place.inSight(before, size);
    };
    makeFit(placed(before.size()).center());
    const QRectF wanted = placed(m_panel.contentSize());
    if (wanted != before) {
        m_place.releaseCorner();
        m_mover.jump(wanted);
    }
}

void WidgetPanel::followTray()
{
    const bool alone = !m_place.hasItem();
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

#include "moc_WidgetPanel.cpp"
