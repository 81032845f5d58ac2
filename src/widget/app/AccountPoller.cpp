#include "widget/app/AccountPoller.h"

#include "widget/core/whenDone.h"
#include "widget/core/WidgetLog.h"
#include "widget/scripts/SideFiles.h"
#include <utility>

using namespace std::chrono_literals;

AccountPoller::AccountPoller(SideFiles &sideFiles, const Clock &clock, Fetch fetch, QObject *parent)
    : QObject(parent)
    , m_sideFiles(sideFiles)
    , m_clock(clock)
    , m_fetch(std::move(fetch))
{
}

void AccountPoller::pollAccount(std::chrono::seconds minAge)
{
    const TimePoint now = m_clock.now();
    if (m_pollingAccount || m_accountPaused.lasts(now)
        || (m_accountAskedAt && !hasPassed(minAge, *m_accountAskedAt, now))
        || fileIsFresh(minAge, now)) {
        return;
    }
    m_pollingAccount = true;
    m_accountAskedAt = now;
    whenDone<AccountUsage::AccountOutcome>(m_fetch(this), AccountUsage::Unavailable(), this,
        [this](const AccountUsage::AccountOutcome &outcome) { finishAccountPoll(outcome); });
}

/// A file from ahead of the clock by more than this says nothing about how old it is.
bool AccountPoller::fileIsFresh(Seconds minAge, TimePoint now) const
{
    const std::optional<Limits> &file = m_sideFiles.fileLimits();
    if (!file || !file->updatedAt) {
        return false;
    }
    const Seconds age = elapsed(*file->updatedAt, now);
    return age < minAge && age > -minAge;
}

void AccountPoller::finishAccountPoll(const AccountUsage::AccountOutcome &outcome)
{
    m_pollingAccount = false;
    if (const auto *limits = std::get_if<Limits>(&outcome)) {
        m_sideFiles.setAccountLimits(*limits);
        Q_EMIT limitsRead();
    } else if (std::holds_alternative<AccountUsage::Throttled>(outcome)) {
        m_accountPaused.extend(m_clock.now(), 900s);
    } else if (std::holds_alternative<AccountUsage::Malformed>(outcome)
        && !std::exchange(m_accountMalformedLogged, true)) {
        WidgetLog::write(QStringLiteral("oauth/usage: unexpected answer"));
    }
}

#include "moc_AccountPoller.cpp"
