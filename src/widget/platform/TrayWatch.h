#pragma once

#include <memory>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QObject>

class DesktopWatch;

/// Whether there is a tray that would show a status item, of either kind: one that takes icons as
/// windows, or one that asks for them over the session bus (StatusNotifierItem).
///
/// Qt decides when the first tray icon is made, and for good, which kind it serves. So none should
/// be made before there is a tray.
class TrayWatch final : public QObject {
    Q_OBJECT

public:
    /// Waits for the bus half a second at most, so that the first answer is there at once.
    explicit TrayWatch(DesktopWatch &desktop, QObject *parent = nullptr);
    ~TrayWatch() override;

    [[nodiscard]] bool available() const;
    /// Whether the icon that was made goes over the bus.
    [[nodiscard]] bool isOnBus() const { return m_kind == Kind::Bus; }
    /// An icon is about to be made, now that a tray is there: from now on only trays of its kind
    /// count.
    void settle();
    /// Looks for a bus where there was none, or where it has gone. Does nothing while there is one.
    void retry();

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void askForHost();
    void loseBus();

private:
    enum class Kind { Any, Bus, Window };

    [[nodiscard]] bool connectToBus();
    void setHost(bool there);
    void update();

    DesktopWatch &m_desktop;
    const QString m_busName; ///< within the program
    QDBusConnection m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;    ///< of the list of items and hosts
    std::unique_ptr<QDBusPendingCallWatcher> m_answer; ///< to the latest question
    bool m_host = false;                               ///< one that asks over the bus
    bool m_available = false;
    Kind m_kind = Kind::Any;
};
