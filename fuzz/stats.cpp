// The statistics, as the indexer writes them, up to what the panel draws of them.

#include "widget/sources/StatsLoad.h"

#include "FakeClock.h"
#include "widget/model/Dashboard.h"
#include "widget/sources/StatsDecoder.h"
#include "widget/views/ChartLayout.h"
#include "widget/views/theme/Metrics.h"
#include "WidgetTarget.h"

#include <algorithm>

namespace {

constexpr qint64 fewestMonths = 6;
constexpr qint64 mostBars = 14;
constexpr qsizetype mostInLegend = 4;
constexpr qint64 farBack = qint64 {1} << 40U; // bars

bool isSane(const std::optional<TokenSet> &tokens)
{
    return !tokens
        || (::isSane(tokens->input) && ::isSane(tokens->output) && ::isSane(tokens->cacheWrite)
            && ::isSane(tokens->total));
}

bool isSane(const PeriodRow &row)
{
    const auto models = row.models.value_or(QList<ModelCost>());
    return ::isSane(row.cost) && isSane(row.tokens)
        && std::ranges::all_of(
            models, [](const ModelCost &model) { return std::isfinite(model.cost); });
}

/// The panel without its views, one for all inputs: lists are brought from what they showed before
/// to what they show now.
class Panel final {
public:
    void show(const ParsedStats &parsed)
    {
        m_model.loadStats(parsed);
        lookAtChart();
        for (int tab = 0; tab < m_dashboard.tabNames().size(); ++tab) {
            m_dashboard.selectTab(tab);
            for (const qint64 steps : {qint64 {0}, qint64 {1}, farBack, qint64 {-1}}) {
                m_model.move(steps);
                lookAtChart();
            }
            const PeriodInfo period = m_dashboard.period();
            require(!period.cost.isEmpty() && !period.note.isEmpty() && !period.prevCost.isEmpty());
        }
        for (const Provider provider : {Provider::Claude, Provider::Codex}) {
            m_model.setProvider(provider);
            const QList<SummaryCell> cells = m_dashboard.summary();
            require(std::ranges::all_of(cells, [](const SummaryCell &cell) {
                return std::isfinite(cell.amount) && !std::isnan(cell.spent) && !cell.cost.isEmpty()
                    && !cell.tokens.isEmpty();
            }));
            lookAtSessions(parsed.sessions, rawValue(provider));
        }
        // What comes next finds a page that may be out of its range.
        m_model.selectTab(HistoryTab::Days);
        m_model.move(farBack);
    }

private:
    void lookAtChart() const
    {
        const Series &series = m_model.series();
        const qint64 fewest = m_model.tab() == HistoryTab::Months ? fewestMonths : 0;
        require(series.bars.size() >= fewest && series.bars.size() <= mostBars);
        require(series.offset >= 0 && series.offset <= series.maxOffset);
        const double scale = ChartLayout::scale(series.bars);
        for (qsizetype i = 0; i < series.bars.size(); ++i) {
            const Bar &bar = series.bars.at(i);
            const double height = ChartLayout::height(bar, scale);
            require(bar.id == i && std::isfinite(bar.cost) && !std::isnan(bar.tokens));
            require(height > 0 && height <= Metrics::chartHeight());
        }
        require(series.legend.size() <= mostInLegend);
        for (qsizetype i = 0; i < series.legend.size(); ++i) {
            require(series.legend.at(i).id == i && !series.legend.at(i).text.isEmpty());
        }
    }

    void lookAtSessions(QList<SessionItem> sessions, const QString &provider)
    {
        sessions.removeIf([&](const SessionItem &one) { return one.provider != provider; });
        const SessionListModel &rows = *m_dashboard.sessions();
        require(rows.rowCount() == sessions.size());
        for (int row = 0; row < rows.rowCount(); ++row) {
            const auto told = [&](int role) { return rows.data(rows.index(row), role).toString(); };
            const QString &title = sessions.at(row).title;
            require(told(SessionListModel::Title) == (title.isEmpty() ? u"—"_qs : title));
            require(!told(SessionListModel::Cost).isEmpty());
            require(!told(SessionListModel::Tokens).isEmpty());
            require(!told(SessionListModel::Spoken).isEmpty());
            (void)told(SessionListModel::Detail);
        }
    }

    FakeClock m_clock {now};
    WidgetModel m_model {m_clock, [] { return QStringList(); }};
    Dashboard m_dashboard {m_model};
};

} // namespace

void tryInput(const QByteArray &bytes)
{
    static Panel panel;
    const StatsLoad outcome = loadStats(bytes);
    if (const auto *const failure = std::get_if<StatsFailure>(&outcome)) {
        require(!failure->why.isEmpty());
        return;
    }
    const auto &parsed = std::get<ParsedStats>(outcome);
    const auto &stats = parsed.stats;
    for (const auto &rows : {stats.days, stats.weeks, stats.months}) {
        const PeriodRows told = rows.value_or(PeriodRows());
        for (qsizetype place = 0; place < told.size(); ++place) {
            require(isSane(told.at(place)));
        }
    }
    const auto decoded = std::get<Stats>(decodeStats(bytes)).sessions;
    require(parsed.sessions.size() == decoded.value_or(QList<SessionRow>()).size());
    for (qsizetype i = 0; i < parsed.sessions.size(); ++i) {
        const SessionItem &session = parsed.sessions.at(i);
        require(session.id == i && std::isfinite(session.cost) && !std::isnan(session.spent));
        require(isSane(session.end));
    }
    panel.show(parsed);
}
