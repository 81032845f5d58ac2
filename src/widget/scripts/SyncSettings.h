#pragma once

#include "widget/scripts/SyncStatus.h"
#include "widget/sources/Stats.h"
#include <chrono>
#include <functional>
#include <QObject>

struct ProcessResult;
class WidgetModel;

/// The sync of this device as a settings view shows and commands it. The protocol is the sync
/// script's: here its commands are run, one at a time, and what they tell is taken.
///
/// Each assignment of a published value notifies, also of an equal one. Main thread only. A
/// password goes to the script's standard input and nowhere else; the copies made here are
/// overwritten.
class SyncSettings final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(QString problemText READ problemText NOTIFY problemChanged)
    Q_PROPERTY(QString name READ name WRITE enterName NOTIFY nameChanged)
    Q_PROPERTY(QString password READ password WRITE enterPassword NOTIFY passwordChanged)
    Q_PROPERTY(QString linkId READ linkId WRITE enterLinkId NOTIFY linkIdChanged)
    Q_PROPERTY(
        QString linkPassword READ linkPassword WRITE enterLinkPassword NOTIFY linkPasswordChanged)

public:
    /// A script that takes longer hangs, and is ended.
    static constexpr std::chrono::milliseconds longestCommand = std::chrono::minutes(10);

    explicit SyncSettings(WidgetModel &model, QObject *parent = nullptr,
        std::chrono::milliseconds patience = longestCommand);
    /// A command that is still running is let go on.
    ~SyncSettings() override;
    Q_DISABLE_COPY_MOVE(SyncSettings)

    /// What was told last.
    [[nodiscard]] const SyncStatus &status() const { return m_status; }
    /// A command is running; another is ignored meanwhile.
    [[nodiscard]] bool busy() const { return m_busy; }
    /// Why the last command failed, for the user.
    [[nodiscard]] const std::optional<QString> &problem() const { return m_problem; }
    [[nodiscard]] QString problemText() const { return m_problem.value_or(QString()); }
    /// What the view's fields hold.
    [[nodiscard]] const QString &name() const { return m_name; }
    [[nodiscard]] const QString &password() const { return m_password; }
    [[nodiscard]] const QString &linkId() const { return m_linkId; }
    [[nodiscard]] const QString &linkPassword() const { return m_linkPassword; }
    /// What each device has cost, by the statistics that the model holds.
    [[nodiscard]] QList<DeviceRow> deviceCosts() const;
    [[nodiscard]] bool syncing() const { return m_status.enabled.value_or(true); }
    /// What an error code says, in the user's language.
    [[nodiscard]] QString message(const QString &code) const;

    void enterName(const QString &name);
    void enterPassword(const QString &password);
    void enterLinkId(const QString &id);
    void enterLinkPassword(const QString &password);
    /// Empties the fields of what was not used, and forgets the problem.
    void forgetEntries();

    /// Takes `sync-status.json`; without one that can be read, all stays as it is.
    void load();
    /// Takes a status. The name's field follows it, typed in or not.
    void apply(const SyncStatus &status);

    // The commands. One that fails leaves its fields to be corrected.

    Q_INVOKABLE void setSyncing(bool on);
    /// Names this device as the field says.
    Q_INVOKABLE void rename();
    /// Sets the password of the field, for others to link to this device; an empty one removes it.
    Q_INVOKABLE void setPassword();
    Q_INVOKABLE void removePassword();
    /// Links the device whose ID and password the fields hold.
    Q_INVOKABLE void link();
    Q_INVOKABLE void unlink(const QString &id);
    /// Counts a linked device's history in the totals, or not.
    Q_INVOKABLE void include(const QString &id, bool on);
    /// Deletes this device's history, here and on the server.
    Q_INVOKABLE void deleteHistory();
    Q_INVOKABLE void syncNow();

Q_SIGNALS:
    void statusChanged();
    void busyChanged();
    void problemChanged();
    void nameChanged();
    void passwordChanged();
    void linkIdChanged();
    void linkPasswordChanged();
    void deviceCostsChanged();
    /// A command has changed which history counts, and with it the statistics.
    void syncChanged();

private:
    using Then = std::function<void()>;

    /// Runs the script with this text on its standard input.
    void run(const QStringList &arguments, Then then = {}, const QString &secret = {});
    void finish(const ProcessResult &ended, const Then &then);
    void take(const SyncStatus &status);
    void setBusy(bool busy);
    void setProblem(const std::optional<QString> &code);

    WidgetModel &m_model;
    std::chrono::milliseconds m_patience;
    SyncStatus m_status;
    bool m_busy = false;
    std::optional<QString> m_code; ///< of the problem
    std::optional<QString> m_problem;
    QString m_name;
    QString m_password;
    QString m_linkId;
    QString m_linkPassword;
};
