#pragma once

#include "widget/core/Clock.h"
#include "widget/core/Pause.h"
#include "widget/sources/AccountUsage.h"
#include <functional>
#include <QObject>

class SideFiles;

/// Decides when the account is asked how much of its limits is used, and takes the answer.
class AccountPoller final : public QObject {
    Q_OBJECT

public:
    /// Asks once; the answer ends with the owner.
    using Fetch = std::function<QFuture<AccountUsage::AccountOutcome>(QObject *owner)>;

    AccountPoller(SideFiles &sideFiles, const Clock &clock, Fetch fetch, QObject *parent = nullptr);

    [[nodiscard]] bool pollingAccount() const { return m_pollingAccount; }

    /// Asks, unless an answer is awaited, the last question or the limit file is newer than this,
    /// or the account wants to be left alone.
    void pollAccount(std::chrono::seconds minAge);

Q_SIGNALS:
    /// There are new readings.
    void limitsRead();

private:
    [[nodiscard]] bool fileIsFresh(Seconds minAge, TimePoint now) const;
    void finishAccountPoll(const AccountUsage::AccountOutcome &outcome);

    SideFiles &m_sideFiles;
    const Clock &m_clock;
    Fetch m_fetch;
    bool m_pollingAccount = false;
    std::optional<TimePoint> m_accountAskedAt; ///< when the last poll was started
    Pause m_accountPaused;                     ///< after the account was asked too often
    bool m_accountMalformedLogged = false;
};
