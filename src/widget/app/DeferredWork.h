#pragma once

#include "widget/core/Sleeper.h"
#include <QObject>

/// Does what bursts of changes ask for once, shortly after the last of them.
class DeferredWork final : public QObject {
    Q_OBJECT

public:
    enum class Work { ReadStats, Save };

    static constexpr std::chrono::milliseconds delay {350};

    explicit DeferredWork(Sleeper sleeper, QObject *parent = nullptr);

    void deferWork(Work work);
    /// Does what is owed now.
    void flushDeferred();

Q_SIGNALS:
    void statsDue();
    void saveDue();

private:
    Sleeper m_sleeper;
    quint64 m_flushTicket = 0; ///< requests so far; a sleeper that is not the newest does nothing
    bool m_pendingStats = false;
    bool m_pendingSave = false;
};
