#include "app/PanelWindow.h"
#include "core/Paths.h"
#include "core/readJSON.h"
#include "model/Dashboard.h"
#include "sources/StatsLoad.h"
#include "text/Strings.h"
#include "views/BarShape.h"
#include "views/PanelActions.h"
#include "views/theme/Metrics.h"
#include "views/VisibleTexts.h"
#include <gtest/gtest.h>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest/QTest>

namespace {

/// What the sample's own account says that the days from `first` to `last` cost.
struct Account {
    double cost = 0;
    double spent = 0;
};

void run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    ASSERT_TRUE(process.waitForFinished(120'000)) << program.toStdString();
    ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
}

Account between(const QJsonArray &days, const QDate &first, const QDate &last)
{
    Account sum;
    for (const QJsonValue value : days) {
        const QJsonObject day = value.toObject();
        const QDate date = QDate::fromString(day[QLatin1String("date")].toString(), Qt::ISODate);
        if (date >= first && date <= last) {
            sum.cost += day[QLatin1String("cost")].toDouble();
            for (const char *part : {"input", "output", "cacheWrite"}) {
                sum.spent += day[QLatin1String(part)].toDouble();
            }
        }
    }
    return sum;
}

QList<const BarShape *> barsIn(const QQuickItem &item)
{
    QList<const BarShape *> bars;
    for (const QQuickItem *child : item.childItems()) {
        const auto *bar = qobject_cast<const BarShape *>(child);
        bars << (bar ? QList {bar} : barsIn(*child));
    }
    return bars;
}

TEST(SamplePanel, showsTheKnownTotals)
{
    const QString build = qEnvironmentVariable("KESTRELBAY_BUILD");
    const QString script = QLatin1String(KESTRELBAY_SOURCE) % u"/sample/make-home.mjs";
    run(QStringLiteral("node"), {script, Paths::home(), QStringLiteral("--small")});
    run(build % u"/bin/kestrelbay-indexer",
        {QStringLiteral("--data"), Paths::dir(), QStringLiteral("--claude"), Paths::claude()});

    const SystemClock clock;
    WidgetModel model(clock, [] { return QStringList(); });
    const StatsLoad load = loadStatsFile();
    ASSERT_TRUE(std::holds_alternative<ParsedStats>(load))
        << std::get<StatsFailure>(load).why.toStdString();
    model.loadStats(std::get<ParsedStats>(load));
    model.setExpanded(true);
    PanelActions actions(nullptr);
    Dashboard dashboard(model);
    PanelWindow window(dashboard, actions);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QStringList seen = visibleTexts(*window.rootObject());

    const QJsonObject known =
        QJsonDocument::fromJson(*readJSON(Paths::home() % u"/totals.json")).object();
    const QJsonArray days = known[QLatin1String("days")].toArray();
    const QDate today =
        QDate::fromString(days.last().toObject()[QLatin1String("date")].toString(), Qt::ISODate);
    if (today != QDate::currentDate()) {
        GTEST_SKIP() << "midnight has passed since the sample was made";
    }
    const QDate monday = today.addDays(1 - today.dayOfWeek());
    const QDate month(today.year(), today.month(), 1);
    const QPair<QDate, QDate> spans[] = {
        {today, today},
        {monday, monday.addDays(6)},
        {month, month.addMonths(1).addDays(-1)},
        {today.addDays(-1), today.addDays(-1)},
        {monday.addDays(-7), monday.addDays(-1)},
        {month.addMonths(-1), month.addDays(-1)},
    };
    const QList<SummaryCell> cells = dashboard.summary();
    ASSERT_EQ(cells.size(), 6);
    for (int i = 0; i < 6; ++i) {
        const Account account = between(days, spans[i].first, spans[i].second);
        EXPECT_NEAR(cells.at(i).amount, account.cost, 0.005) << cells.at(i).label.toStdString();
        const QString cost = model.strings()->money(account.cost);
        EXPECT_TRUE(seen.contains(cost)) << cost.toStdString();
        const QString tokens = Strings::tokens(account.spent);
        EXPECT_TRUE(seen.contains(tokens)) << tokens.toStdString();
        EXPECT_GT(account.cost, 0) << "a sample without a figure here proves nothing";
    }

    // The bars stand side by side on the plot.
    double left = (window.width() - Metrics::chartWidth) / 2 - 1;
    const auto bars = barsIn(*window.rootObject());
    EXPECT_EQ(bars.size(), 14);
    for (const BarShape *bar : bars) {
        const double x = bar->mapToScene({}).x();
        EXPECT_GE(x, left);
        left = x + bar->column().width;
    }
    EXPECT_LE(left, (window.width() + Metrics::chartWidth) / 2 + 1);
}

} // namespace
