#include "Measure.h"
#include "Row.h"
#include "TenYears.h"
#include "widget/core/Paths.h"
#include "widget/sources/StatsLoad.h"
#include <QJsonDocument>

namespace {

constexpr int repetitions = 41;

/// Both keep what they made beyond the time, since the program does so too.
Row loadRow(const QByteArray &bytes)
{
    StatsLoad loaded;
    QJsonDocument document;
    const QList<double> times = medianTimes(repetitions,
        {{[&loaded] { loaded = loadStatsFile(); }, [&loaded] { loaded = StatsLoad(); }},
            {[&] { document = QJsonDocument::fromJson(bytes); },
                [&document] { document = QJsonDocument(); }}});
    const bool isWhole = std::holds_alternative<ParsedStats>(loaded) && document.isObject();
    return {QStringLiteral("load statistics, ten years / bare JSON"),
        isWhole ? times.at(0) / times.at(1) : std::numeric_limits<double>::infinity(), 2,
        QStringLiteral("x"),
        QStringLiteral("%1 ms / %2 ms, %3 MB")
            .arg(times.at(0), 0, 'f', 1)
            .arg(times.at(1), 0, 'f', 1)
            .arg(static_cast<double>(bytes.size()) / 1e6, 0, 'f', 1)};
}

} // namespace

QList<Row> statsRows()
{
    const TenYears::Home home(TenYears::Panel::Hidden);
    return {loadRow(TenYears::statistics())};
}
