#include "widget/scripts/SyncSettings.h"

#include "widget/core/Paths.h"
#include "widget/core/readJSON.h"
#include "widget/core/whenDone.h"
#include "widget/model/WidgetModel.h"
#include "widget/platform/ProcessRun.h"
#include "widget/scripts/Node.h"
#include <algorithm>
#include <QFileInfo>

namespace {

constexpr QLatin1String noNode("no_node");

struct Message {
    QLatin1String code;
    QLatin1String key;
    const char16_t *english = nullptr;
};

constexpr Message messages[] = {
    {QLatin1String("offline"), QLatin1String("syncOffline"),
        u"The server cannot be reached. Try again later."},
    {QLatin1String("wrong_id_or_password"), QLatin1String("syncWrong"),
        u"No device with this ID and password."},
    {QLatin1String("too_many"), QLatin1String("syncTooMany"),
        u"Too many attempts. Try again in a few minutes."},
    {QLatin1String("bad_password"), QLatin1String("syncBadPassword"),
        u"The password needs 6 to 128 characters."},
    {QLatin1String("bad_id"), QLatin1String("syncBadId"),
        u"A device ID looks like ABCD-EFGH-JKMN."},
    {QLatin1String("self"), QLatin1String("syncSelf"), u"That is this device’s own ID."},
    {QLatin1String("sync_off"), QLatin1String("syncIsOff"), u"Sync is off."},
};

/// Overwrites a text before it is let go. A copy that somebody else still holds stays as it is.
template <typename Text> void wipe(Text &text)
{
    if (text.isDetached()) {
        // Volatile, or the compiler would leave out what nobody reads again.
        auto *const bytes = reinterpret_cast<volatile char *>(text.data());
        std::fill_n(bytes, text.size() * qsizetype(sizeof(*text.constData())), '\0');
    }
    text.clear();
}

/// Keeps a secret in memory of its own, so that it can be overwritten later; the old one is now.
void replaceSecret(QString &secret, const QString &by)
{
    QString own(by.constData(), by.size());
    wipe(secret);
    secret = std::move(own);
}

QString onOrOff(bool on)
{
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

/// The error code of a command that has ended; nothing when it succeeded.
std::optional<QString> errorCode(int exitStatus, const std::optional<SyncStatus> &told)
{
    if (exitStatus == Node::notFound) {
        return QString(noNode);
    }
    return told ? told->error : QString(u"exit_" % QString::number(exitStatus));
}

} // namespace

SyncSettings::SyncSettings(WidgetModel &model, QObject *parent, std::chrono::milliseconds patience)
    : QObject(parent)
    , m_model(model)
    , m_patience(patience)
{
    connect(&model, &WidgetModel::statsChanged, this, &SyncSettings::deviceCostsChanged);
    connect(&model, &WidgetModel::stringsChanged, this, [this] { setProblem(m_code); });
}

SyncSettings::~SyncSettings()
{
    wipe(m_password);
    wipe(m_linkPassword);
}

QList<DeviceRow> SyncSettings::deviceCosts() const
{
    return m_model.stats() ? m_model.stats()->devices.value_or(QList<DeviceRow>())
                           : QList<DeviceRow>();
}

QString SyncSettings::message(const QString &code) const
{
    if (code == noNode) {
        return m_model.t(QStringLiteral("needNode"));
    }
    const auto *const known = std::ranges::find_if(
        messages, [&code](const Message &message) { return message.code == code; });
    if (known != std::end(messages)) {
        return m_model.label(known->key, QString::fromUtf16(known->english));
    }
    const QString failed =
        m_model.label(QStringLiteral("syncFailed"), QStringLiteral("Something went wrong."));
    return failed % u" (" % code % u')';
}

void SyncSettings::enterName(const QString &name)
{
    m_name = name;
    Q_EMIT nameChanged();
}

void SyncSettings::enterPassword(const QString &password)
{
    replaceSecret(m_password, password);
    Q_EMIT passwordChanged();
}

void SyncSettings::enterLinkId(const QString &id)
{
    m_linkId = id;
    Q_EMIT linkIdChanged();
}

void SyncSettings::enterLinkPassword(const QString &password)
{
    replaceSecret(m_linkPassword, password);
    Q_EMIT linkPasswordChanged();
}

void SyncSettings::forgetEntries()
{
    enterName(m_status.name.value_or(QString()));
    enterPassword({});
    enterLinkId({});
    enterLinkPassword({});
    setProblem(std::nullopt);
}

void SyncSettings::load()
{
    const auto bytes = readJSON(Paths::syncStatus(), SyncStatus::most);
    if (const auto told = bytes ? SyncStatus::parse(*bytes) : std::nullopt) {
        take(*told);
    }
}

/// What is told by the way does not undo what somebody is typing.
void SyncSettings::take(const SyncStatus &status)
{
    const bool typed = m_name != m_status.name.value_or(QString());
    const QString name = m_name;
    apply(status);
    if (typed) {
        enterName(name);
    }
}

void SyncSettings::apply(const SyncStatus &status)
{
    m_status = status;
    Q_EMIT statusChanged();
    enterName(m_status.name.value_or(QString()));
}

void SyncSettings::setSyncing(bool on)
{
    run({onOrOff(on)}, [this] { Q_EMIT syncChanged(); });
}

void SyncSettings::rename()
{
    run({QStringLiteral("rename"), m_name.trimmed()},
        [this] { enterName(m_status.name.value_or(QString())); });
}

void SyncSettings::setPassword()
{
    run(
        {QStringLiteral("password")}, [this] { enterPassword({}); }, m_password);
}

void SyncSettings::removePassword()
{
    run({QStringLiteral("password")});
}

void SyncSettings::link()
{
    const auto then = [this] {
        enterLinkId({});
        enterLinkPassword({});
        Q_EMIT syncChanged();
    };
    run({QStringLiteral("link"), m_linkId.trimmed()}, then, m_linkPassword);
}

void SyncSettings::unlink(const QString &id)
{
    run({QStringLiteral("unlink"), id}, [this] { Q_EMIT syncChanged(); });
}

void SyncSettings::include(const QString &id, bool on)
{
    run({QStringLiteral("include"), id, onOrOff(on)}, [this] { Q_EMIT syncChanged(); });
}

void SyncSettings::deleteHistory()
{
    run({QStringLiteral("delete-history")}, [this] { Q_EMIT syncChanged(); });
}

void SyncSettings::syncNow()
{
    // The script takes its options before its commands.
    run({QStringLiteral("--now"), QStringLiteral("sync")}, [this] { Q_EMIT syncChanged(); });
}

void SyncSettings::run(const QStringList &arguments, Then then, const QString &secret)
{
    if (m_busy) {
        return;
    }
    if (!QFileInfo::exists(Paths::sync())) {
        setProblem(noNode);
        return;
    }
    setBusy(true);
    setProblem(std::nullopt);
    // Not Node::run, which would leave a copy of the input in memory.
    ProcessRun::Options options {
        .input = secret.toUtf8(), .patience = m_patience, .outlivesParent = true};
    const auto ended =
        ProcessRun::start(Node::process(QStringList {Paths::sync()} + arguments), options, this);
    wipe(options.input);
    whenDone(
        ended, this, [this, then = std::move(then)](const std::optional<ProcessResult> &result) {
            // A shell that does not start is as good as one that finds no node.
            finish(result.value_or(ProcessResult {.status = Node::notFound, .output = {}}), then);
        });
}

void SyncSettings::finish(const ProcessResult &ended, const Then &then)
{
    // Whatever the exit status, the document counts; but what a shell without node says is none.
    const auto told = ended.status == Node::notFound
        ? std::nullopt
        : SyncStatus::parse(Node::scriptOutput(ended.output));
    const std::optional<QString> error = errorCode(ended.status, told);
    setBusy(false);
    if (told) {
        take(*told);
    }
    if (error) {
        setProblem(*error);
    } else if (then) {
        then();
    }
}

void SyncSettings::setBusy(bool busy)
{
    m_busy = busy;
    Q_EMIT busyChanged();
}

void SyncSettings::setProblem(const std::optional<QString> &code)
{
    m_code = code;
    m_problem = code ? std::optional(message(*code)) : std::nullopt;
    Q_EMIT problemChanged();
}

#include "moc_SyncSettings.cpp"
