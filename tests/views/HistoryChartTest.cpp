#include "views/HistoryChart.h"

#include "core/Paths.h"
#include "FakeClock.h"
#include "TestFiles.h"
#include <QCoreApplication>
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
    }

    /// This many days, the newest, 5 March, costing as much as there are.
    void load(int days)
    {
        ParsedStats parsed;
        parsed.stats.days = QList<PeriodRow>();
        for (int i = 1; i <= days; ++i) {
            PeriodRow row;
            row.date = QDate(2026, 3, 5).addDays(i - days).toString(Qt::ISODate);
            row.month = row.date->left(7);
            row.cost = i;
            *parsed.stats.days << row;
        }
        parsed.stats.weeks = QList<PeriodRow>();
        if (days > 0) {
            parsed.stats.months = QList<PeriodRow> {parsed.stats.days->constLast()};
        }
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
    EXPECT_EQ(m_chart.count(), 0);
    EXPECT_EQ(m_chart.reference(), QString());
    load(12);
    EXPECT_EQ(m_chart.count(), 12);
    EXPECT_EQ(m_chart.reference(), QLatin1String("$12.00"));
    EXPECT_EQ(m_chart.columns().at(5).x, 5 * 26);
    EXPECT_EQ(m_chart.columns().at(5).height, 39);
    EXPECT_EQ(m_chart.columns().at(5).spoken, QLatin1String("27 February, $6.00, 0 tokens"));
    m_chart.hoverAt(5 * 26 + 1);
    EXPECT_EQ(hovered(), "5 27 February");
    EXPECT_EQ(m_chart.tip().x, 5 * 26 + 11);
    EXPECT_EQ(m_chart.tip().y, 92 - 39);
    EXPECT_EQ(m_chart.opacities().at(5) + m_chart.opacities().at(6), 1.45);
    m_chart.unhover();
    EXPECT_EQ(m_chart.tip().cost, QLatin1String("$6.00")) << "the tip is still fading";
    EXPECT_EQ(m_chart.opacities().at(6), 1);
}

TEST_F(Chart, tellsOfNothingWhileThePointerStaysOnABar)
{
    load(14);
    m_chart.hoverAt(30);
    QSignalSpy hovered(&m_chart, &HistoryChart::hoveredChanged);
    QSignalSpy tip(&m_chart, &HistoryChart::tipChanged);
    QSignalSpy opacities(&m_chart, &HistoryChart::opacitiesChanged);
    QSignalSpy page(&m_chart, &HistoryChart::pageChanged);
    m_chart.hoverAt(31);
    EXPECT_EQ(hovered.size() + tip.size() + opacities.size(), 0);
    m_chart.hoverAt(50);
    EXPECT_EQ(hovered.size(), 1);
    EXPECT_EQ(tip.size(), 1);
    EXPECT_EQ(page.size(), 0);
}

TEST_F(Chart, isReadByKeyboard)
{
    load(20);
    const struct {
        Qt::Key key;
        const char *hovered;
        qint64 offset;
    } rows[] = {
        {Qt::Key_Right, "13 5 March", 0},
        {Qt::Key_Right, "13 5 March", 0},
        {Qt::Key_Left, "12 4 March", 0},
        {Qt::Key_PageUp, "12 26 February", 6},
        {Qt::Key_Home, "0 14 February", 6},
        {Qt::Key_Left, "0 14 February", 6},
        {Qt::Key_PageDown, "0 20 February", 0},
        {Qt::Key_Left, "0 19 February", 1},
        {Qt::Key_Right, "1 20 February", 1},
        {Qt::Key_Home, "0 14 February", 6},
        {Qt::Key_End, "13 5 March", 0},
        {Qt::Key_PageDown, "13 5 March", 0},
    };
    for (const auto &row : rows) {
        press(row.key);
        EXPECT_EQ(hovered(), row.hovered) << row.key;
        EXPECT_EQ(m_model->offset(), row.offset) << row.key;
    }
    m_chart.setVisible(false);
    EXPECT_EQ(hovered(), "-");
}

TEST_F(Chart, choosesNoPadding)
{
    load(1);
    m_model->selectTab(HistoryTab::Months);
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Left, Qt::Key_End, Qt::Key_Right}) {
        press(key);
        EXPECT_EQ(hovered(), "5 March") << key;
    }
    load(0);
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Left, Qt::Key_PageUp, Qt::Key_End}) {
        press(key);
        EXPECT_EQ(hovered(), "-") << "all six are padding";
    }
}

TEST_F(Chart, growsItsBarsWhenTheyComeIntoSight)
{
    QSignalSpy appeared(&m_chart, &HistoryChart::appeared);
    const auto after = [&](auto act) {
        const qsizetype before = appeared.size();
        act();
        return appeared.size() - before;
    };
    EXPECT_EQ(after([this] { load(20); }), 1) << "the first bars";
    EXPECT_EQ(after([this] { load(20); }), 0) << "new statistics";
    EXPECT_EQ(after([this] { m_chart.scroll(3); }), 0);
    EXPECT_EQ(after([this] { m_model->selectTab(HistoryTab::Months); }), 1);
    EXPECT_EQ(after([this] { m_model->selectTab(HistoryTab::Weeks); }), 0) << "without any bars";
    m_model->selectTab(HistoryTab::Days);
    EXPECT_EQ(after([this] { m_chart.setVisible(false); }), 0);
    EXPECT_EQ(after([this] { m_model->selectTab(HistoryTab::Days); }), 0) << "out of sight";
    EXPECT_EQ(after([this] { m_chart.setVisible(true); }), 1);
}

TEST_F(Chart, labelsTheNewestBarAndAsManyAsHaveRoom)
{
    load(14);
    QList<qsizetype> shown;
    for (qsizetype i = 0; i < m_chart.count(); ++i) {
        if (m_chart.columns().at(i).labelShown) {
            shown << i;
        }
    }
    ASSERT_GT(shown.size(), 2);
    EXPECT_EQ(shown.constLast(), 13);
    const qsizetype stride = shown.at(1) - shown.at(0);
    EXPECT_GT(stride, 1) << "two bars have no room for two dates";
    EXPECT_LT(shown.at(0), stride);
    load(3);
    for (const ChartColumn &column : m_chart.columns()) {
        EXPECT_TRUE(column.labelShown) << "three have";
    }
}

} // namespace
