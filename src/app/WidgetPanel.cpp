#include "app/WidgetPanel.h"

#include "platform/DesktopWatch.h"
#include "views/PanelActions.h"
#include "views/theme/Motion.h"
#include <QCursor>

using namespace std::chrono_literals;

WidgetPanel::WidgetPanel(Surroundings surroundings, Dashboard &dashboard, PanelActions &actions)
    : m_around(std::move(surroundings))
    , m_model(m_around.model)
    , m_clock(m_around.clock)
    , m_panel(dashboard, actions)
    , m_mover(m_panel, m_clock)
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
        m_anchor.reset();
        if (mode() == ViewMode::Window) {
            takeSpot();
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
    makeFit((mode() == ViewMode::Icon ? statusFrame() : m_panel.frame()).center());
    if (mode() == ViewMode::Window || !m_around.statusItem()) {
        return;
    }
    if (const QRectF frame = dropFrame(m_panel.frame().size()); frame != m_panel.frame()) {
        m_mover.glide(frame, std::nullopt, Motion::settleTime);
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
    m_windowSpot = spot;
}

void WidgetPanel::appear()
{
    m_panel.setTranslucent(m_around.desktop.composited());
    m_panel.settle();
    stand(!m_around.statusItem());
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
            m_shownFrom = QCursor::pos();
            makeFit(statusFrame().center());
            m_mover.jump(dropFrame(m_panel.contentSize()));
        }
        watchOutsideClicks();
    }
    present();
    Q_EMIT presented();
    Q_EMIT changed();
}

void WidgetPanel::present()
{
    m_quiet.extend(m_clock.now(), 900ms);
    const QRectF target = m_mover.frameTarget().value_or(m_panel.frame());
    if (!m_panel.isShown()) {
        m_model.conceal();
        if (!Motion::reduced()) {
            m_mover.setOpacity(0);
            m_mover.jump(target.translated(0, rise()));
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
    stopWatchingOutsideClicks();
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
    m_pointer = QCursor::pos();
    if (!m_hiddenByPress.lasts(m_clock.now())) {
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
    stopWatchingOutsideClicks();
    ++m_visibilityTicket;
    m_panel.orderOut();
    m_mover.setOpacity(1);
    m_model.conceal();
    m_anchor.reset();
    applyLevel();
    if (mode() == ViewMode::Window) {
        place();
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

#include "moc_WidgetPanel.cpp"
