#pragma once

#include "widget/platform/ProcessRun.h"
#include <QDBusVariant>
#include <QObject>
#include <vector>

class QDBusPendingCallWatcher;

/// Whether the system asks programs to move things less.
///
/// Asked of the desktop portal, which also tells of changes; on macOS of the user's defaults, once.
/// While the answer is awaited it counts as asking for that: nothing should move before it is known
/// whether it may. Where there is nobody to ask, it does not.
class ReducedMotion final : public QObject {
    Q_OBJECT

public:
    explicit ReducedMotion(QObject *parent = nullptr);

    [[nodiscard]] bool reduced() const;
    /// Begins to ask and to listen.
    void watch();
    /// The same of macOS's defaults.
    void watchDefaults(const ProgramRunner &runner);
    /// Takes what has been answered by now, for which the event loop need not run.
    void takeAnswers();

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    /// One of the portal's settings that has been asked for.
    struct Question {
        QDBusPendingCallWatcher *answer;
        QString group;
        QString key;
    };

    void ask(const QString &group, const QString &key);
    [[nodiscard]] bool take(const QString &group, const QString &key, QVariant setting);

    std::vector<Question> m_questions; ///< those that wait for an answer
    bool m_waits = false;              ///< for the defaults
    bool m_asked = false;              ///< by the setting made for this
    bool m_animationsOff = false;      ///< GNOME's own switch
    bool m_durationZero = false;       ///< KDE's own slider
};
