#include "widget/app/OutsidePresses.h"

#include "widget/platform/DesktopWatch.h"
#include <QApplication>
#include <QCursor>
#include <QWindow>

using namespace std::chrono_literals;

OutsidePresses::OutsidePresses(DesktopWatch &desktop, const Clock &clock, const QWindow &window)
    : m_desktop(desktop)
    , m_clock(clock)
    , m_window(window)
{
    connect(&desktop, &DesktopWatch::pressed, this, &OutsidePresses::pressedSomewhere);
    connect(&window, &QWindow::activeChanged, this, &OutsidePresses::focusChanged,
        Qt::QueuedConnection);
}

void OutsidePresses::watchOutsideClicks()
{
    if (!m_since) {
        m_desktop.watchPresses(true);
        m_since = m_clock.now();
    }
}

void OutsidePresses::stopWatchingOutsideClicks()
{
    if (std::exchange(m_since, std::nullopt)) {
        m_desktop.watchPresses(false);
    }
}

void OutsidePresses::pressedSomewhere()
{
    // What opened it may still be under way; and what lies outside is somebody else's window.
    if (!m_since || !hasPassed(100ms, *m_since, m_clock.now())
        || QGuiApplication::topLevelAt(QCursor::pos())) {
        return;
    }
    m_pressed.extend(m_clock.now(), 500ms);
    Q_EMIT turnedAway();
}

/// Where presses in other programs are not told of, the keyboard's going there is.
void OutsidePresses::focusChanged()
{
    const bool toldOfPresses = QGuiApplication::platformName() == QLatin1String("xcb")
        && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!toldOfPresses && m_since && !m_window.isActive() && !QGuiApplication::focusWindow()
        && !QApplication::activePopupWidget()) {
        Q_EMIT turnedAway();
    }
}

#include "moc_OutsidePresses.cpp"
