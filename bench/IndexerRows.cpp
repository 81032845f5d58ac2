#include "Measure.h"
#include "Row.h"
#include "Trial.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int fewRepetitions = 5;
constexpr int repetitions = 9;

/// Medians of runs that take turns, one for each subject.
QList<double> medianTimes(int rounds, const QList<std::function<Cost()>> &subjects)
{
    QList<QList<double>> times(subjects.size());
    for (int round = 0; round < rounds; ++round) {
        for (qsizetype i = 0; i < subjects.size(); ++i) {
            times[i].append(subjects.at(i)().time);
        }
    }
    QList<double> medians;
    std::ranges::transform(times, std::back_inserter(medians), median);
    return medians;
}

QString pair(double time, double other)
{
    return QStringLiteral("%1 ms / %2 ms").arg(time, 0, 'f', 1).arg(other, 0, 'f', 1);
}

Row ratio(const char *name, double time, double other, double budget)
{
    return {QLatin1String(name), time / other, budget, QStringLiteral("x"), pair(time, other)};
}

/// All of it, as on a computer where the program was just installed.
QList<Row> coldRows(Trial &year)
{
    double memory = 0;
    const QList<double> times = medianTimes(fewRepetitions,
        {[&year] { return year.cat(); },
            [&] {
                year.forget();
                const Cost cost = year.index();
                memory = std::max(memory, cost.memory);
                return cost;
            }});
    return {
        ratio("index anew / cat", times.at(1), times.at(0), 4),
        // Milliseconds for a megabyte are seconds for a gigabyte.
        {QStringLiteral("index anew: time for 1 GB"), times.at(1) / year.megabytes(), 1,
            QStringLiteral("s"), QStringLiteral("of %1 MB").arg(year.megabytes(), 0, 'f', 0)},
        {QStringLiteral("index anew: memory"), memory, 64, QStringLiteral("MB"), {}},
    };
}

QList<Row> againRows(Trial &year)
{
    constexpr qint64 growth = 100'000;
    constexpr double mayCost = 20;
    const QList<double> times = medianTimes(repetitions,
        {[&year] { return year.walk(); }, [&year] { return year.index(); },
            [&year] {
                year.grow(growth);
                return year.index();
            }});
    return {
        ratio("index again / stat of every file", times.at(1), times.at(0), 3),
        {QStringLiteral("index again: a session grew by 100 kB"), times.at(2) - times.at(1),
            mayCost, QStringLiteral("ms"), pair(times.at(2), times.at(1))},
    };
}

/// As many days and sessions, ten times as much in them.
Row tenYearsRow()
{
    constexpr qint64 growth = 20'000;
    const QStringList figures {QStringLiteral("--files=7306"), QStringLiteral("--days=3653")};
    Trial few(
        QStringLiteral("ten-years"), figures + QStringList {QStringLiteral("--bytes=40000000")});
    Trial many(QStringLiteral("ten-years-dense"),
        figures + QStringList {QStringLiteral("--bytes=400000000")});
    const auto indexGrown = [](Trial &trial) {
        trial.grow(growth);
        return trial.index();
    };
    few.index();
    many.index();
    const QList<double> times = medianTimes(
        repetitions, {[&] { return indexGrown(few); }, [&] { return indexGrown(many); }});
    return ratio("ten years, small change: 10 x the bytes", times.at(1), times.at(0), 1.3);
}

} // namespace

QList<Row> indexerRows()
{
    const QString bytes = qEnvironmentVariable("KESTRELBAY_BENCH_MB", QStringLiteral("600"))
        % QStringLiteral("000000");
    Trial year(QStringLiteral("year"), {QStringLiteral("--bytes=") % bytes});
    QList<Row> rows = coldRows(year);
    const QByteArray before = year.statistics();
    rows += againRows(year);
    // A program that finds nothing would be the fastest.
    const bool hasCounted = before.contains("\"date\"") && year.statistics() != before;
    rows += Row {QStringLiteral("index: runs without effect"), hasCounted ? 0.0 : 1.0, 0, QString(),
        QString()};
    rows += tenYearsRow();
    return rows;
}
