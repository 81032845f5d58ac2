#include "widget/platform/ReducedMotion.h"

#include "widget/core/whenDone.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString objectPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString reducedMotion = QStringLiteral("reduced-motion");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");
const QString enableAnimations = QStringLiteral("enable-animations");
const QString kde = QStringLiteral("org.kde.kdeglobals.KDE");
const QString durationFactor = QStringLiteral("AnimationDurationFactor");

} // namespace

ReducedMotion::ReducedMotion(QObject *parent)
    : QObject(parent)
{
}

bool ReducedMotion::reduced() const
{
    return m_waits || !m_questions.empty() || m_asked || m_animationsOff || m_durationZero;
}

void ReducedMotion::watch()
{
#ifdef Q_OS_MACOS
    watchDefaults(programRunner());
#else
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return; // libdbus aborts the program when it is to listen on a bus that has gone
    }
    bus.connect(portal, objectPath, settings, QStringLiteral("SettingChanged"), this,
        SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(appearance, reducedMotion);
    ask(gnome, enableAnimations);
    ask(kde, durationFactor);
#endif
}

void ReducedMotion::watchDefaults(const ProgramRunner &runner)
{
    m_waits = true;
    const auto answer = runner(QStringLiteral("defaults"),
        {QStringLiteral("read"), QStringLiteral("com.apple.universalaccess"),
            QStringLiteral("reduceMotion")},
        this);
    whenDone(answer, this, [this](const std::optional<ProcessResult> &result) {
        m_waits = false;
        m_asked = result && result->status == 0 && result->output.trimmed() == "1";
        Q_EMIT changed();
    });
}

void ReducedMotion::ask(const QString &group, const QString &key)
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(portal, objectPath, settings, QStringLiteral("Read"));
    question << group << key;
    auto *const answer =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    m_questions.push_back({answer, group, key});
    connect(answer, &QDBusPendingCallWatcher::finished, this, &ReducedMotion::takeAnswers);
}

void ReducedMotion::takeAnswers()
{
    const bool before = reduced();
    for (const Question &question : std::exchange(m_questions, {})) {
        if (!question.answer->isFinished()) {
            m_questions.push_back(question);
            continue;
        }
        question.answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *question.answer;
        if (reply.isValid()) {
            std::ignore = take(question.group, question.key, reply.value().variant());
        }
    }
    if (reduced() != before) {
        Q_EMIT changed();
    }
}

void ReducedMotion::settingChanged(
    const QString &group, const QString &key, const QDBusVariant &value)
{
    if (take(group, key, value.variant())) {
        Q_EMIT changed();
    }
}

/// Whether the setting is one that matters.
bool ReducedMotion::take(const QString &group, const QString &key, QVariant setting)
{
    // Answers wrap the value once more than changes do.
    while (setting.canConvert<QDBusVariant>()) {
        setting = setting.value<QDBusVariant>().variant();
    }
    if (group == appearance && key == reducedMotion) {
        m_asked = setting.toUInt() == 1;
    } else if (group == gnome && key == enableAnimations) {
        m_animationsOff = !setting.toBool();
    } else if (group == kde && key == durationFactor) {
        bool isNumber = false;
        m_durationZero = setting.toString().toDouble(&isNumber) == 0 && isNumber;
    } else {
        return false;
    }
    return true;
}

#include "moc_ReducedMotion.cpp"
