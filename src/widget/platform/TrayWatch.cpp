#include "widget/platform/TrayWatch.h"

#include "widget/platform/DesktopWatch.h"
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFile>

namespace {

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString objectPath = QStringLiteral("/StatusNotifierWatcher");

/// Where the session bus is; nothing where there is none. The bus library's own search may start
/// programs.
QString busAddress()
{
    QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") % u"/bus";
    if (address.isEmpty() && QFile::exists(socket)) {
        return u"unix:path=" % socket;
    }
    return address;
}

QDBusMessage hostQuestion()
{
    QDBusMessage question = QDBusMessage::createMethodCall(watcher, objectPath,
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << watcher << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    return question;
}

bool isThere(const QDBusPendingReply<QDBusVariant> &reply)
{
    return reply.isValid() && reply.value().variant().toBool();
}

} // namespace

TrayWatch::TrayWatch(DesktopWatch &desktop, QObject *parent)
    : QObject(parent)
    , m_desktop(desktop)
    , m_busName(u"TrayWatch" % QString::number(reinterpret_cast<quintptr>(this)))
    , m_bus(QString())
{
    connect(&desktop, &DesktopWatch::trayChanged, this, &TrayWatch::update);
    if (connectToBus()) {
        constexpr int patience = 500; // milliseconds
        const QDBusMessage reply = m_bus.call(hostQuestion(), QDBus::Block, patience);
        m_host = isThere(reply);
        if (reply.type() == QDBusMessage::ErrorMessage) {
            askForHost(); // it may only be slow
        }
    }
    m_available = m_host || m_desktop.hasTray();
}

TrayWatch::~TrayWatch()
{
    QDBusConnection::disconnectFromBus(m_busName);
}

bool TrayWatch::available() const
{
    return m_available;
}

void TrayWatch::retry()
{
    if (m_bus.isConnected()) {
        return;
    }
    loseBus();
    if (connectToBus()) {
        askForHost();
    }
}

/// Whether there is a bus; its tray is then listened to.
bool TrayWatch::connectToBus()
{
    const QString address = busAddress();
    if (address.isEmpty()) {
        return false;
    }
    m_watcher.reset();
    QDBusConnection::disconnectFromBus(m_busName); // the name would lead to the one that has gone
    m_bus = QDBusConnection::connectToBus(address, m_busName);
    if (!m_bus.isConnected()) {
        return false; // libdbus aborts the program when it is to listen on a bus that has gone
    }
    m_bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
        SLOT(loseBus()));
    for (const QString &change : {QStringLiteral("StatusNotifierHostRegistered"),
             QStringLiteral("StatusNotifierHostUnregistered")}) {
        m_bus.connect(watcher, objectPath, watcher, change, this, SLOT(askForHost()));
    }
    m_watcher = std::make_unique<QDBusServiceWatcher>(watcher, m_bus);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &TrayWatch::askForHost);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        m_answer.reset();
        setHost(false);
    });
    return true;
}

void TrayWatch::askForHost()
{
    m_answer = std::make_unique<QDBusPendingCallWatcher>(m_bus.asyncCall(hostQuestion()));
    connect(m_answer.get(), &QDBusPendingCallWatcher::finished, this,
        [this] { setHost(isThere(*m_answer)); });
}

void TrayWatch::settle()
{
    if (m_kind == Kind::Any) {
        m_kind = m_host ? Kind::Bus : Kind::Window;
    }
}

void TrayWatch::loseBus()
{
    m_answer.reset();
    setHost(false);
}

void TrayWatch::setHost(bool there)
{
    m_host = there;
    update();
}

void TrayWatch::update()
{
    const bool available =
        (m_host && m_kind != Kind::Window) || (m_desktop.hasTray() && m_kind != Kind::Bus);
    if (std::exchange(m_available, available) != available) {
        Q_EMIT changed();
    }
}

#include "moc_TrayWatch.cpp"
