#include "widget/views/HistoryChart.h"

#include "FakeClock.h"
#include "TestFiles.h"
#include "widget/core/Paths.h"
#include <QCoreApplication>
#include <QFile>
#include <QKeyEvent>
#include <QSignalSpy>

namespace {

using namespace std::chrono;

class Chart : public testing::Test {
protected:
    void SetUp() override
    {
        writeFile(Paths::i18n(), R"({"en":{"dayShort":"d MMM","dayLong":"d MMMM",
            "weekOf":"Week of {0}","monthShort":"MMM","monthLong":"MMMM","tokens":"{0} tokens"}})");
        m_model = std::make_unique<WidgetModel>(m_clock, [] { return QStringList(); });
        m_chart.setModel(m_model.get());
        QFile::remove(Paths::i18n()); // the texts are not for the other tests
    }

    /// This many days, the newest, 5 March, costing as much as there are; and their last month.
    void load(int days)
    {
        QList<PeriodRow> rows;
        for (int i = 1; i <= days; ++i) {
            const QString date = QDate(2026, 3, 5).addDays(i - days).toString(Qt::ISODate);
            rows << PeriodRow {.date = date, .month = date.left(7), .cost = i};
        }
        ParsedStats parsed;
        parsed.stats.days = rows;
        parsed.stats.months = rows.mid(days - 1);
        m_model->loadStats(parsed);
    }

    void press(Qt::Key key)
    {
        QKeyEvent event(QEvent::KeyPress, key, {});
        QCoreApplication::sendEvent(&m_chart, &event);
    }

    /// The hovered bar's place on the page, and its period.
    std::string hovered() const
    {
        return m_chart.hovered() < 0
            ? "-"
            : std::to_string(m_chart.hovered()) + ' ' + m_chart.tip().title.toStdString();
    }

    FakeClock m_clock {sys_days(2026y / 3 / 5) + 11h};
    std::unique_ptr<WidgetModel> m_model;
    HistoryChart m_chart;
};

TEST_F(Chart, writesWhatIsSeen)
{
    EXPECT_EQ(m_chart.reference(), QString());
    load(12);
    EXPECT_EQ(m_chart.count(), 12);
    EXPECT_EQ(m_chart.reference(), QLatin1String("$12.00"));
    const ChartColumn column = m_chart.columns().at(5);
    EXPECT_TRUE(column.x == 5 * 26 && column.height == 39);
    EXPECT_EQ(column.spoken, QLatin1String("27 February, $6.00, 0 tokens"));
    m_chart.hoverAt(5 * 26 + 1);
    EXPECT_EQ(hovered(), "5 27 February");
    EXPECT_TRUE(m_chart.tip().x == 5 * 26 + 11 && m_chart.tip().y == 92 - 39);
    EXPECT_EQ(m_chart.opacities().at(5) + m_chart.opacities().at(6), 1.45);
    // Nothing is told while the pointer stays on a bar.
    const QSignalSpy tips(&m_chart, &HistoryChart::tipChanged);
    const QSignalSpy opacities(&m_chart, &HistoryChart::opacitiesChanged);
    const QSignalSpy pages(&m_chart, &HistoryChart::pageChanged);
    m_chart.hoverAt(5 * 26 + 2);
    EXPECT_EQ(tips.size() + opacities.size(), 0);
    m_chart.hoverAt(6 * 26);
    EXPECT_TRUE(tips.size() == 1 && opacities.size() == 1 && pages.isEmpty());
    m_chart.unhover();
    EXPECT_EQ(m_chart.tip().cost, QLatin1String("$7.00")) << "the tip is still fading";
    EXPECT_EQ(m_chart.opacities().at(5), 1);
}

TEST_F(Chart, isReadByKeyboard)
{
    load(20);
    const std::tuple<Qt::Key, const char *, qint64> rows[] = {{Qt::Key_Right, "13 5 March", 0},
        {Qt::Key_Right, "13 5 March", 0}, {Qt::Key_Left, "12 4 March", 0},
        {Qt::Key_PageUp, "12 26 February", 6}, {Qt::Key_Home, "0 14 February", 6},
        {Qt::Key_Left, "0 14 February", 6}, {Qt::Key_PageDown, "0 20 February", 0},
        {Qt::Key_Left, "0 19 February", 1}, {Qt::Key_Right, "1 20 February", 1},
        {Qt::Key_Home, "0 14 February", 6}, {Qt::Key_End, "13 5 March", 0},
        {Qt::Key_PageDown, "13 5 March", 0}};
    for (const auto &[key, bar, offset] : rows) {
        press(key);
        EXPECT_EQ(hovered(), bar) << key;
        EXPECT_EQ(m_model->offset(), offset) << key;
    }
    m_chart.setVisible(false);
    EXPECT_EQ(hovered(), "-");
    m_chart.setVisible(true);

    // Padding cannot be chosen.
    m_model->selectTab(HistoryTab::Months);
    for (const int days : {1, 0}) {
        load(days);
        for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Left, Qt::Key_PageUp, Qt::Key_End}) {
            press(key);
            EXPECT_EQ(hovered(), days == 1 ? "5 March" : "-") << key;
        }
    }
}

TEST_F(Chart, labelsTheNewestBarAndAsManyAsHaveRoom)
{
    const auto labelled = [this](int days) {
        load(days);
        QList<qsizetype> shown;
        for (qsizetype i = 0; i < m_chart.count(); ++i) {
            if (m_chart.columns().at(i).labelShown) {
                shown << i;
            }
        }
        return shown;
    };
    const QList<qsizetype> some = labelled(14);
    ASSERT_GT(some.size(), 2);
    EXPECT_EQ(some.constLast(), 13);
    const qsizetype stride = some.at(1) - some.at(0);
    EXPECT_GT(stride, 1) << "two bars have no room for two dates";
    EXPECT_LT(some.at(0), stride);
    EXPECT_EQ(labelled(3), (QList<qsizetype> {0, 1, 2}));
}

} // namespace
