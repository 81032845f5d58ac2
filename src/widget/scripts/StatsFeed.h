#pragma once

#include "formats/TimePoint.h"
#include "widget/sources/StatsLoad.h"
#include <optional>
#include <QObject>
#include <QThreadPool>

class WidgetModel;

/// Notices when the statistics file changes, decodes it off the main thread and gives it to the
/// model.
///
/// A version of the file is known by its stamp, the moment of its modification. A version that
/// failed is logged once and not read again; what was shown before stays.
class StatsFeed final : public QObject {
    Q_OBJECT

public:
    enum class Wait { No, Yes };

    explicit StatsFeed(WidgetModel &model, QObject *parent = nullptr);

    /// Loads the file if it changed. With Wait::Yes it is decoded here and now.
    void readStats(Wait wait);
    /// Has the next read take the file again, changed or not.
    void forgetStats() { m_statsStamp.reset(); }
    /// Shows what was held back while the pointer rested on the chart.
    void flushHeldStats();

private:
    /// A finished read that must not change the chart under the pointer.
    struct Held {
        ParsedStats parsed;
        TimePoint stamp;
        int generation = 0;
    };

    void decodeInBackground(TimePoint stamp, int generation);
    void finishStats(const StatsLoad &load, TimePoint stamp, int generation);
    void show(const ParsedStats &parsed, TimePoint stamp);

    WidgetModel &m_model;
    QThreadPool m_workers;
    std::optional<TimePoint> m_statsStamp;     ///< the version now shown
    std::optional<TimePoint> m_statsRequested; ///< the version being read
    std::optional<TimePoint> m_statsFailed;    ///< the version that failed to load
    std::optional<Held> m_heldStats;
    int m_statsGeneration = 0; ///< reads started; only the newest one's result is taken
};
