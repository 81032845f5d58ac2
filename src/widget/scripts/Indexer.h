#pragma once

#include "widget/core/Clock.h"
#include <memory>
#include <QObject>
#include <QProcess>

class WidgetModel;

/// Runs the indexer script, one run at a time.
class Indexer final : public QObject {
    Q_OBJECT

public:
    Indexer(WidgetModel &model, const Clock &clock, QObject *parent = nullptr);
    /// Ends a run that is still going on.
    ~Indexer() override;
    Q_DISABLE_COPY_MOVE(Indexer)

    [[nodiscard]] bool running() const { return m_indexer != nullptr; }
    /// When the indexer was last started; the distant past before the first time.
    [[nodiscard]] TimePoint lastIndex() const { return m_lastIndex; }

    /// Starts a run unless one is going on or there is no script.
    void startIndexer();

Q_SIGNALS:
    /// A run has ended, with this exit status.
    void finished(int status);

private:
    void indexerFinished(int status);
    void endIfStuck();
    void failedToStart();

    WidgetModel &m_model;
    const Clock &m_clock;
    std::unique_ptr<QProcess> m_indexer;
    TimePoint m_lastIndex {};
    bool m_isEnded = false; ///< by us, because it ran for too long
};
