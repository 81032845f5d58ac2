#include "widget/scripts/StatsFeed.h"

#include "widget/core/giveMemoryBack.h"
#include "widget/core/modified.h"
#include "widget/core/Paths.h"
#include "widget/core/whenDone.h"
#include "widget/core/WidgetLog.h"
#include "widget/model/WidgetModel.h"
#include <QtConcurrent/QtConcurrentRun>
#include <utility>

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
    whenDone<StatsLoad>(QtConcurrent::run(&m_workers, loadStatsFile),
        StatsFailure {QStringLiteral("loading it ended without a result")}, this,
        [this, stamp, generation](const StatsLoad &load) { finishStats(load, stamp, generation); });
}

void StatsFeed::finishStats(const StatsLoad &load, TimePoint stamp, int generation)
{
    if (generation != m_statsGeneration) {
        return; // a newer read has started
    }
    if (const auto *failed = std::get_if<StatsFailure>(&load)) {
        m_statsRequested.reset();
        m_statsFailed = stamp;
        m_model.setUnreadable(true);
        WidgetLog::write(u"stats.json: " % failed->why);
        return;
    }
    const auto &parsed = std::get<ParsedStats>(load);
    if (m_model.hover().x()) {
        m_heldStats = Held {parsed, stamp, generation};
        return;
    }
    show(parsed, stamp);
}

void StatsFeed::flushHeldStats()
{
    const std::optional<Held> held = std::exchange(m_heldStats, std::nullopt);
    if (held && held->generation == m_statsGeneration) {
        show(held->parsed, held->stamp);
    }
}

void StatsFeed::show(const ParsedStats &parsed, TimePoint stamp)
{
    m_statsStamp = stamp;
    m_statsRequested.reset();
    m_model.loadStats(parsed);
    m_workers.start(giveMemoryBack); // of what is no longer shown, and of decoding
}

#include "moc_StatsFeed.cpp"
