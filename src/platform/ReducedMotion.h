#pragma once

#include "platform/ProcessRun.h"
#include <QDBusVariant>
#include <QObject>

/// Whether the system asks programs to move things less.
///
/// Asked of the desktop portal, which also tells of changes; on macOS of the user's defaults, once.
/// Until an answer comes, and where none comes, it does not.
class ReducedMotion final : public QObject {
    Q_OBJECT

public:
    explicit ReducedMotion(QObject *parent = nullptr);

    [[nodiscard]] bool reduced() const;
    /// Begins to ask and to listen.
    void watch();
    /// The same of macOS's defaults.
    void watchDefaults(const ProgramRunner &runner);

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void ask(const QString &group, const QString &key);

    bool m_asked = false;         ///< by the setting made for this
    bool m_animationsOff = false; ///< GNOME's own switch
    bool m_durationZero = false;  ///< KDE's own slider
};
