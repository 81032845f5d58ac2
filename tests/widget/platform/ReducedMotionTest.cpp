#include "widget/platform/ReducedMotion.h"

#include "TestFiles.h"
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

/// What a desktop tells about its settings, each of which is named by its group and key.
class FakePortal final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    QVariantMap settings;
    int asked = 0;

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key)
    {
        ++asked;
        const QVariant value = settings.value(group % u' ' % key);
        if (!value.isValid()) {
            sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"));
            return {};
        }
        return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
    }

Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);
};

namespace {

const QString portal = QStringLiteral("org.freedesktop.appearance reduced-motion");
const QString gnome = QStringLiteral("org.gnome.desktop.interface enable-animations");
const QString kde = QStringLiteral("org.kde.kdeglobals.KDE AnimationDurationFactor");

int warnings = 0;

void countWarning(QtMsgType /*type*/, const QMessageLogContext & /*where*/, const QString &text)
{
    ++warnings;
    static_cast<void>(std::fprintf(stderr, "%s\n", qPrintable(text)));
}

/// A bus of our own on which no program is started by itself.
QString startBus(QProcess &bus, const QTemporaryDir &folder)
{
    const QString config = folder.filePath(QStringLiteral("bus.conf"));
    writeFile(config,
        "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
        "<policy context=\"default\"><allow send_destination=\"*\"/><allow own=\"*\"/>"
        "<allow receive_sender=\"*\"/></policy></busconfig>");
    bus.start(QStringLiteral("dbus-daemon"),
        {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
            u"--config-file=" % config});
    return bus.waitForReadyRead() ? QString::fromLatin1(bus.readLine().trimmed()) : QString();
}

/// Lets all answers that are on their way arrive.
void settle()
{
    const QDBusMessage question =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
    QDBusConnection::sessionBus().call(question, QDBus::BlockWithGui);
    QCoreApplication::processEvents();
}

void expectAnswers(FakePortal &desktop)
{
    const struct {
        QVariantMap settings;
        bool reduced;
    } rows[] = {
        {{}, false},
        {{{portal, 1U}}, true},
        {{{portal, 2U}, {gnome, true}, {kde, 1.0}}, false},
        {{{portal, 0U}, {gnome, false}, {kde, QStringLiteral("1")}}, true},
        {{{kde, QStringLiteral("0")}}, true},
        {{{kde, QStringLiteral("fast")}, {portal, QStringLiteral("rubbish")}}, false},
        {{{portal, QStringList {QStringLiteral("1")}}, {kde, QString()}}, false},
    };
    for (const auto &row : rows) {
        desktop.settings = row.settings;
        desktop.asked = 0;
        ReducedMotion motion;
        motion.watch();
        ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.asked == 3; }));
        settle();
        EXPECT_EQ(motion.reduced(), row.reduced) << "row " << &row - rows;
    }
}

void expectChanges(FakePortal &desktop)
{
    desktop.settings = {{gnome, false}};
    ReducedMotion motion;
    motion.watch();
    desktop.asked = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.asked == 3; }));
    settle();
    QSignalSpy changed(&motion, &ReducedMotion::changed);
    const std::tuple<QString, QVariant, bool> rows[] = {
        {portal, 1U, true}, {gnome, true, true}, {portal, 0U, false}, {kde, 0.0, true}};
    for (const auto &[setting, value, reduced] : rows) {
        const QStringList names = setting.split(u' ');
        Q_EMIT desktop.SettingChanged(names.at(0), QStringLiteral("x"), QDBusVariant(value));
        Q_EMIT desktop.SettingChanged(names.at(0), names.at(1), QDBusVariant(value));
        changed.clear();
        ASSERT_TRUE(changed.wait()) << setting.toStdString();
        EXPECT_EQ(changed.size(), 1) << "other settings are none of its business";
        EXPECT_EQ(motion.reduced(), reduced) << setting.toStdString();
    }
}

TEST(ReducedMotion, isWhatAnyOfTheDesktopsAsksFor)
{
    const QTemporaryDir folder;
    QProcess bus;
    const QString address = startBus(bus, folder);
    ASSERT_FALSE(address.isEmpty()) << "there is no dbus-daemon";
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toLatin1());
    const QtMessageHandler before = qInstallMessageHandler(countWarning);
    ReducedMotion alone;
    alone.watch();
    EXPECT_TRUE(alone.reduced()) << "nobody knows yet";
    for (int look = 0; look < 500 && alone.reduced(); ++look) {
        QThread::msleep(10); // while nothing else is done
        alone.takeAnswers();
    }
    EXPECT_FALSE(alone.reduced());

    FakePortal desktop;
    QDBusConnection connection = QDBusConnection::connectToBus(address, QStringLiteral("portal"));
    connection.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &desktop,
        QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    EXPECT_TRUE(connection.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    expectAnswers(desktop);
    expectChanges(desktop);

    bus.kill();
    bus.waitForFinished();
    EXPECT_TRUE(QTest::qWaitFor([] { return !QDBusConnection::sessionBus().isConnected(); }));
    ReducedMotion orphan;
    orphan.watch();
    QCoreApplication::processEvents();
    EXPECT_FALSE(orphan.reduced());
    qInstallMessageHandler(before);
    EXPECT_EQ(warnings, 0);
}

TEST(ReducedMotion, isReadFromTheDefaults)
{
    for (const auto &[answer, reduced] :
        {std::pair(ProcessResult {0, "1\n"}, true), std::pair(ProcessResult {0, "0\n"}, false),
            std::pair(ProcessResult {1, "1"}, false)}) {
        ReducedMotion motion;
        QSignalSpy changed(&motion, &ReducedMotion::changed);
        motion.watchDefaults([&result = answer](const QString &program,
                                 const QStringList &arguments, QObject * /*owner*/) {
            EXPECT_EQ(program % u' ' % arguments.join(u' '),
                QStringLiteral("defaults read com.apple.universalaccess reduceMotion"));
            return QtFuture::makeReadyFuture(std::optional(result));
        });
        EXPECT_TRUE(changed.wait());
        EXPECT_EQ(motion.reduced(), reduced);
    }
}

} // namespace

#include "ReducedMotionTest.moc"
