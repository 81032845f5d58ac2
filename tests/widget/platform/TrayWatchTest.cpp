#include "widget/platform/TrayWatch.h"

#include "TestFiles.h"
#include "widget/platform/DesktopWatch.h"
#include <future>
#include <QDBusConnection>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace std::chrono_literals;

/// The list of hosts that a desktop keeps.
class FakeWatcher final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hasHost)

public:
    bool hasHost = false;

    explicit FakeWatcher(const QString &address)
        : m_bus(QDBusConnection::connectToBus(address, name))
    {
        m_bus.registerObject(
            QStringLiteral("/StatusNotifierWatcher"), this, QDBusConnection::ExportAllContents);
    }
    ~FakeWatcher() override { QDBusConnection::disconnectFromBus(name); }

    [[nodiscard]] bool appear() { return m_bus.registerService(service); }
    void vanish() { m_bus.unregisterService(service); }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    const QString name = QStringLiteral("desktop");
    const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
    QDBusConnection m_bus;
};

namespace {

/// A bus that always has the same address.
void startBus(QProcess &bus, const QTemporaryDir &folder, const QString &address)
{
    const QString config = folder.filePath(QStringLiteral("bus.conf"));
    writeFile(config,
        "<busconfig><type>session</type><listen>" + address.toUtf8()
            + "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
              "<allow own=\"*\"/><allow receive_sender=\"*\"/></policy></busconfig>");
    bus.start(QStringLiteral("dbus-daemon"),
        {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
            u"--config-file=" % config});
    ASSERT_TRUE(bus.waitForReadyRead()) << "there is no dbus-daemon";
}

/// Whether this is told of within a while.
bool becomes(const TrayWatch &tray, bool available)
{
    return QTest::qWaitFor([&] { return tray.available() == available; });
}

void expectHostsComeAndGo(DesktopWatch &desktop, FakeWatcher &watcher)
{
    TrayWatch tray(desktop);
    const QSignalSpy changed(&tray, &TrayWatch::changed);
    EXPECT_FALSE(tray.available()) << "nobody keeps a list";
    watcher.hasHost = true;
    ASSERT_TRUE(watcher.appear());
    EXPECT_TRUE(becomes(tray, true));
    // The host answers in this thread, so it is another one that waits for the first answer.
    auto first = std::async(std::launch::async, [&] { return TrayWatch(desktop).available(); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.wait_for(0s) == std::future_status::ready; }));
    EXPECT_TRUE(first.get());
    watcher.hasHost = false;
    Q_EMIT watcher.StatusNotifierHostUnregistered();
    EXPECT_TRUE(becomes(tray, false));
    watcher.hasHost = true;
    Q_EMIT watcher.StatusNotifierHostRegistered();
    EXPECT_TRUE(becomes(tray, true));
    watcher.vanish();
    EXPECT_TRUE(becomes(tray, false));
    EXPECT_EQ(changed.size(), 4);
}

TEST(TrayWatch, followsTheHostsOnABusThatMayGoItself)
{
    const QTemporaryDir folder;
    const QString address = u"unix:path=" % folder.filePath(QStringLiteral("bus"));
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
    DesktopWatch desktop;
    TrayWatch tray(desktop);
    tray.retry();
    EXPECT_FALSE(tray.available()) << "there is no bus yet";

    QProcess bus;
    for (int round = 0; round < 2; ++round) {
        ASSERT_NO_FATAL_FAILURE(startBus(bus, folder, address));
        FakeWatcher watcher(address);
        ASSERT_NO_FATAL_FAILURE(expectHostsComeAndGo(desktop, watcher));
        ASSERT_TRUE(watcher.appear());
        EXPECT_FALSE(tray.available());
        tray.retry();
        EXPECT_TRUE(becomes(tray, true)) << "round " << round;
        TrayWatch late(desktop);
        EXPECT_TRUE(becomes(late, true)) << "the host did not answer before";
        bus.kill();
        bus.waitForFinished();
        EXPECT_TRUE(becomes(tray, false));
        EXPECT_TRUE(becomes(late, false));
        tray.retry();
    }
}

} // namespace

#include "TrayWatchTest.moc"
