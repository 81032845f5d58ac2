#include "widget/app/DeferredWork.h"

#include <utility>

DeferredWork::DeferredWork(Sleeper sleeper, QObject *parent)
    : QObject(parent)
    , m_sleeper(std::move(sleeper))
{
}

void DeferredWork::deferWork(Work work)
{
    (work == Work::ReadStats ? m_pendingStats : m_pendingSave) = true;
    m_sleeper(delay, [this, ticket = ++m_flushTicket] {
        if (ticket == m_flushTicket) {
            flushDeferred();
        }
    });
}

void DeferredWork::flushDeferred()
{
    if (std::exchange(m_pendingStats, false)) {
        Q_EMIT statsDue();
    }
    if (std::exchange(m_pendingSave, false)) {
        Q_EMIT saveDue();
    }
}

#include "moc_DeferredWork.cpp"
