#pragma once

#include "widget/core/Clock.h"
#include "widget/core/Pause.h"
#include <optional>
#include <QObject>

class DesktopWatch;
class QWindow;

/// Notices that the user turns to something else than a window of ours.
class OutsidePresses final : public QObject {
    Q_OBJECT

public:
    /// All of it outlives this object.
    OutsidePresses(DesktopWatch &desktop, const Clock &clock, const QWindow &window);

    /// A press was noticed just now; it may be one on the status item, where the tray tells of it
    /// later.
    [[nodiscard]] bool wasJustNow() { return m_pressed.lasts(m_clock.now()); }
    void watchOutsideClicks();
    void stopWatchingOutsideClicks();

Q_SIGNALS:
    void turnedAway();

private:
    void pressedSomewhere();
    void focusChanged();

    DesktopWatch &m_desktop;
    const Clock &m_clock;
    const QWindow &m_window;
    std::optional<TimePoint> m_since; ///< when watching began
    Pause m_pressed;
};
