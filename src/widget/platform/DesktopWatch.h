#pragma once

#include <memory>
#include <QObject>
#include <QRect>

/// What goes on around the program's windows, told by the X server over a connection of its own.
///
/// Only events are followed: nothing is asked again and again. Where the program does not run on X
/// nothing is ever told; the screen then counts as composited, and no window as covered.
class DesktopWatch final : public QObject {
    Q_OBJECT

public:
    explicit DesktopWatch(QObject *parent = nullptr);
    ~DesktopWatch() override;

    /// Whether what is behind a translucent window shows through it.
    [[nodiscard]] bool composited() const;
    /// Whether there is a tray that takes icons as windows (XEmbed). A system that never has X has
    /// a place for status items at all times.
    [[nodiscard]] bool hasTray() const;
    /// Whether the user cannot see the whole of a top-level window, of which the X id is given: it
    /// is minimised or on another desktop, or another window lies over some of it. Docks, menus and
    /// the like do not count as such. Asks the server; not for each frame.
    [[nodiscard]] bool isCovered(quint32 window) const;

    /// What docks and bars leave of a monitor, both in the X server's own pixels.
    [[nodiscard]] QRect cleared(const QRect &monitor) const;

    /// Whether presses of pointer buttons, anywhere on the screen, are told of; at first they are
    /// not. Turning a wheel is no press.
    void watchPresses(bool on);

Q_SIGNALS:
    void compositedChanged();
    void trayChanged();
    /// Docks and bars leave something else.
    void barsChanged();
    /// The user went to another desktop (workspace).
    void desktopSwitched();
    void pressed();

private:
    class Session;

    std::unique_ptr<Session> m_session; ///< none where the program does not run on X
};
