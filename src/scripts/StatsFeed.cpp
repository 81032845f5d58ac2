#include "scripts/StatsFeed.h"

#include "core/modified.h"
#include "core/Paths.h"
#include "core/WidgetLog.h"
#include "model/WidgetModel.h"
#include <QFutureWatcher>
#include <QtConcurrent/QtConcurrentRun>

StatsFeed::StatsFeed(WidgetModel &model, QObject *parent)
    : QObject(parent)
    , m_model(model)
{
    m_workers.setThreadPriority(QThread::LowPriority);
}

void StatsFeed::readStats(Wait wait)
{
    const std::optional<TimePoint> stamp = modified(Paths::stats());
    if (!stamp || stamp == m_statsStamp || stamp == m_statsRequested || stamp == m_statsFailed) {
        return;
    }
    ++m_statsGeneration;
    m_statsRequested = stamp;
    if (wait == Wait::Yes) {
        finishStats(loadStatsFile(), *stamp, m_statsGeneration);
    } else {
        decodeInBackground(*stamp, m_statsGeneration);
    }
}

void StatsFeed::decodeInBackground(TimePoint stamp, int generation)
{
    auto *const watcher = new QFutureWatcher<StatsLoad>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, stamp, generation] {
        finishStats(watcher->result(), stamp, generation);
        watcher->deleteLater();
    });
    watcher->setFuture(QtConcurrent::run(&m_workers, loadStatsFile));
}

void StatsFeed::finishStats(const StatsLoad &load, TimePoint stamp, int generation)
{
    if (generation != m_statsGeneration) {
        return; // a newer read has started
    }
    m_statsRequested.reset();
    if (const auto *failed = std::get_if<StatsFailure>(&load)) {
        m_statsFailed = stamp;
        m_model.setUnreadable(true);
        WidgetLog::write(u"stats.json: " % failed->why);
        return;
    }
    m_statsStamp = stamp;
    m_model.loadStats(std::get<ParsedStats>(load));
}

#include "moc_StatsFeed.cpp"
