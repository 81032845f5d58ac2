// A tray for tests, of the kind that asks programs over the session bus for their status items. It
// takes one command a line, and answers each with one line of JSON: item, Activate,
// ContextMenu, menu, click ID.

#include <cstdio>
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSocketNotifier>
#include <unistd.h>

namespace {

const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

/// The latest one that was registered.
struct StatusItem {
    QString service;
    QString path;
};

/// Why a command has no answer, in words.
QString refusal;

QList<QVariant> call(const StatusItem &item, const QString &interface, const QString &method,
    const QList<QVariant> &arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(item.service, item.path, interface, method);
    message.setArguments(arguments);
    constexpr int patience = 5000; // milliseconds
    const QDBusMessage reply = QDBusConnection::sessionBus().call(message, QDBus::Block, patience);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        refusal = reply.errorName() % u": " % reply.errorMessage();
    }
    return reply.arguments();
}

QVariant property(const StatusItem &item, const QString &name)
{
    return call(item, properties, QStringLiteral("Get"), {itemInterface, name})
        .value(0)
        .value<QDBusVariant>()
        .variant();
}

QString toolTip(const QDBusArgument &argument)
{
    QString iconName;
    QString title;
    argument.beginStructure();
    argument >> iconName;
    argument.beginArray(); // pictures, of which there are none
    argument.endArray();
    argument >> title;
    return title;
}

/// As people see it: underscores only mark the letters that are keys, unless doubled.
QString withoutMnemonic(QString label)
{
    static const QRegularExpression mnemonic(QStringLiteral("_(.)"));
    return label.replace(mnemonic, QStringLiteral("\\1"));
}

/// An entry of a menu with all below it.
QJsonObject entry(const QDBusArgument &argument)
{
    int id = 0;
    QVariantMap told;
    QJsonArray children;
    argument.beginStructure();
    argument >> id >> told;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        children << entry(child.variant().value<QDBusArgument>());
    }
    argument.endArray();
    argument.endStructure();
    const auto text = [&](const QString &key) { return told.value(key).toString(); };
    return {
        {QStringLiteral("id"), id},
        {QStringLiteral("label"), withoutMnemonic(text(QStringLiteral("label")))},
        {QStringLiteral("type"),
            told.value(QStringLiteral("type"), QStringLiteral("standard")).toString()},
        {QStringLiteral("visible"), told.value(QStringLiteral("visible"), true).toBool()},
        {QStringLiteral("enabled"), told.value(QStringLiteral("enabled"), true).toBool()},
        {QStringLiteral("toggle"), text(QStringLiteral("toggle-type"))},
        {QStringLiteral("checked"), told.value(QStringLiteral("toggle-state")).toInt() == 1},
        {QStringLiteral("children"), children},
    };
}

StatusItem menuOf(const StatusItem &item)
{
    return {item.service, property(item, QStringLiteral("Menu")).value<QDBusObjectPath>().path()};
}

/// As if the menu were opened.
QJsonObject openMenu(const StatusItem &item)
{
    const StatusItem menu = menuOf(item);
    constexpr int root = 0;
    constexpr int everything = -1; // levels, and with no names all properties
    call(menu, menuInterface, QStringLiteral("AboutToShow"), {root});
    const auto layout =
        call(menu, menuInterface, QStringLiteral("GetLayout"), {root, everything, QStringList()});
    return refusal.isEmpty() ? entry(layout.value(1).value<QDBusArgument>()) : QJsonObject();
}

/// What was clicked may end the program before it answers, so that it does is not waited for.
void click(const StatusItem &item, int id)
{
    const StatusItem menu = menuOf(item);
    QDBusMessage message = QDBusMessage::createMethodCall(
        menu.service, menu.path, menuInterface, QStringLiteral("Event"));
    message << id << QStringLiteral("clicked") << QVariant::fromValue(QDBusVariant(QString()))
            << 0U;
    QDBusConnection::sessionBus().send(message);
}

QJsonObject obey(const StatusItem &item, const QString &command)
{
    const QStringList words = command.split(u' ');
    if (item.service.isEmpty()) {
        refusal = QStringLiteral("no item");
    } else if (command == u"item") {
        const QVariant tip = property(item, QStringLiteral("ToolTip"));
        return {{QStringLiteral("toolTip"), toolTip(tip.value<QDBusArgument>())}};
    } else if (command == u"Activate" || command == u"ContextMenu") {
        std::ignore = call(item, itemInterface, command, {0, 0});
    } else if (command == u"menu") {
        return openMenu(item);
    } else if (words.size() == 2 && words.at(0) == u"click") {
        click(item, words.at(1).toInt());
    } else {
        refusal = QStringLiteral("no such command");
    }
    return {};
}

} // namespace

/// The list of status items, which is the tray at the same time.
class TrayHost final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered CONSTANT)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion CONSTANT)

public:
    [[nodiscard]] bool appear();

    [[nodiscard]] QStringList items() const
    {
        return m_item.service.isEmpty() ? QStringList() : QStringList(m_item.service % m_item.path);
    }
    [[nodiscard]] bool isHostRegistered() const { return true; }
    [[nodiscard]] int protocolVersion() const { return 0; }

    void read();

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &serviceOrPath);
    void RegisterStatusNotifierHost(const QString & /*service*/) { }

Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString &item);
    void StatusNotifierItemUnregistered(const QString &item);
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    StatusItem m_item;
    QDBusServiceWatcher m_owner;
    QByteArray m_input;
};

bool TrayHost::appear()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    m_owner.setConnection(bus);
    m_owner.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_owner, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        const QString gone = m_item.service % m_item.path;
        m_item = {};
        Q_EMIT StatusNotifierItemUnregistered(gone);
    });
    return bus.registerObject(
               QStringLiteral("/StatusNotifierWatcher"), this, QDBusConnection::ExportAllContents)
        && bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
}

void TrayHost::RegisterStatusNotifierItem(const QString &serviceOrPath)
{
    m_item = serviceOrPath.startsWith(u'/')
        ? StatusItem {message().service(), serviceOrPath}
        : StatusItem {serviceOrPath, QStringLiteral("/StatusNotifierItem")};
    m_owner.setWatchedServices({m_item.service});
    Q_EMIT StatusNotifierItemRegistered(m_item.service % m_item.path);
}

void TrayHost::read()
{
    std::array<char, 4096> bytes {};
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) {
        QCoreApplication::quit();
        return;
    }
    m_input.append(bytes.data(), count);
    for (qsizetype end = m_input.indexOf('\n'); end >= 0; end = m_input.indexOf('\n')) {
        refusal.clear();
        QJsonObject answer = obey(m_item, QString::fromUtf8(m_input.left(end)));
        if (!refusal.isEmpty()) {
            answer = {{QStringLiteral("error"), refusal}};
        }
        m_input.remove(0, end + 1);
        const QByteArray line = QJsonDocument(answer).toJson(QJsonDocument::Compact);
        static_cast<void>(std::puts(line.constData()));
        static_cast<void>(std::fflush(stdout));
    }
}

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    TrayHost host;
    if (!host.appear()) {
        static_cast<void>(std::fputs("there is no bus, or a tray already\n", stderr));
        return 1;
    }
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &host, &TrayHost::read);
    return QCoreApplication::exec();
}

#include "trayHost.moc"
