#include "app/PanelWindow.h"
#include "core/Paths.h"
#include "FakeClock.h"
#include "model/Dashboard.h"
#include "TestFiles.h"
#include "views/isFading.h"
#include "views/PanelActions.h"
#include "views/theme/Metrics.h"
#include "views/theme/Motion.h"
#include "views/VisibleTexts.h"
#include <QSignalSpy>
#include <QtTest/QTest>

namespace {

using namespace std::chrono;

class Panel : public testing::Test {
protected:
    void SetUp() override
    {
        Motion::setReduced(true);
        writeFile(Paths::i18n(), QByteArray(R"({"en":{"collecting":"Collecting","today":"Today",
            "thisWeek":"This week","thisMonth":"This month","yesterday":"Yesterday",
            "lastWeek":"Last week","lastMonth":"Last month","statsTip":"Statistics",
            "tabSessions":"Sessions"}})"));
        m_model = std::make_unique<WidgetModel>(m_clock, [] { return QStringList(); });
        m_dashboard = std::make_unique<Dashboard>(*m_model);
        m_window = std::make_unique<PanelWindow>(*m_dashboard, m_actions);
        m_window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
        m_window->requestActivate();
    }

    void TearDown() override { Motion::setReduced(false); }

    void load(qsizetype sessions)
    {
        ParsedStats parsed;
        parsed.stats.providers = QMap<QString, ProviderStats> {{QStringLiteral("claude"),
            {StatsTotals {.today = Totals {.cost = 12.48}, .lastMonth = Totals {.cost = 388}}}}};
        for (qsizetype i = 0; i < sessions; ++i) {
            SessionItem item;
            item.id = i;
            item.title = QStringLiteral("Session %1").arg(i);
            item.provider = QStringLiteral("claude");
            parsed.sessions << item;
        }
        m_model->loadStats(parsed);
    }

    /// Lets sizes and fades come to rest.
    void settle()
    {
        QCoreApplication::processEvents();
        EXPECT_TRUE(QTest::qWaitFor([this] {
            return m_window->size() == m_window->rootObject()->size().toSize()
                && !isFading(*m_window->rootObject());
        }));
    }

    QStringList texts() { return visibleTexts(*m_window->rootObject()); }

    QPoint centreOf(const char *name)
    {
        QQuickItem *item = itemNamed(*m_window->rootObject(), QLatin1String(name));
        EXPECT_TRUE(item) << name;
        return item ? item->mapToScene(item->boundingRect().center()).toPoint() : QPoint();
    }

    std::string focused() const
    {
        const QQuickItem *item = m_window->activeFocusItem();
        return item ? item->metaObject()->className() : "";
    }

    FakeClock m_clock {sys_days(2026y / 3 / 5) + 11h};
    PanelActions m_actions {nullptr};
    std::unique_ptr<WidgetModel> m_model;
    std::unique_ptr<Dashboard> m_dashboard;
    std::unique_ptr<PanelWindow> m_window;
};

TEST_F(Panel, saysInWordsThatThereIsNothingYet)
{
    EXPECT_TRUE(texts().contains(QLatin1String("Collecting")));
    EXPECT_FALSE(texts().contains(QLatin1String("Today")));
}

TEST_F(Panel, isCompactOrWide)
{
    load(3);
    settle();
    EXPECT_TRUE(texts().contains(QLatin1String("$12.48")));
    EXPECT_FALSE(texts().contains(QLatin1String("$388")));
    EXPECT_FALSE(texts().contains(QLatin1String("Session 0")));
    settle();
    EXPECT_EQ(m_window->width(), qRound(Metrics::compactBody) + 28);

    m_model->setExpanded(true);
    settle();
    EXPECT_TRUE(texts().contains(QLatin1String("$388")));
    m_model->selectTab(HistoryTab::Sessions);
    settle();
    EXPECT_TRUE(texts().contains(QLatin1String("Session 0")));
    EXPECT_EQ(m_window->width(), qRound(Metrics::wideBody) + 28);
}

TEST_F(Panel, boundsTheSessionListAndMakesOnlyTheRowsInSight)
{
    m_model->setExpanded(true);
    m_model->selectTab(HistoryTab::Sessions);
    load(0);
    settle();
    EXPECT_TRUE(texts().contains(QLatin1String("No sessions yet")));
    load(10'000);
    settle();
    const auto *list = m_window->rootObject()->findChild<QQuickItem *>(QStringLiteral("sessions"));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->height(), Metrics::sessionsMaxHeight);
    const auto *rows = list->property("contentItem").value<QQuickItem *>();
    ASSERT_TRUE(rows);
    EXPECT_GT(rows->childItems().size(), 7);
    EXPECT_LT(rows->childItems().size(), 40);
    EXPECT_TRUE(texts().contains(QLatin1String("Session 0")));
    EXPECT_FALSE(texts().contains(QLatin1String("Session 20")));
}

TEST_F(Panel, asksForWhatIsClicked)
{
    load(1);
    QSignalSpy provider(&m_actions, &PanelActions::providerRequested);
    QSignalSpy refresh(&m_actions, &PanelActions::refreshRequested);
    QSignalSpy expand(&m_actions, &PanelActions::expandRequested);
    for (const char *name : {"Codex", "Refresh now", "Statistics"}) {
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centreOf(name));
    }
    ASSERT_EQ(provider.size(), 1);
    EXPECT_EQ(provider.at(0).at(0), 1);
    EXPECT_EQ(refresh.size(), 1);
    EXPECT_EQ(expand.size(), 1);
}

TEST_F(Panel, worksByKeyboardAlone)
{
    load(30);
    m_model->setExpanded(true);
    settle();
    QObject::connect(&m_actions, &PanelActions::providerRequested, m_model.get(),
        [this](int index) { m_model->setProvider(Dashboard::provider(index)); });
    QSignalSpy refresh(&m_actions, &PanelActions::refreshRequested);
    QSignalSpy expand(&m_actions, &PanelActions::expandRequested);

    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QTest::keyClick(m_window.get(), Qt::Key_Right);
    EXPECT_EQ(m_model->provider(), Provider::Codex);
    QTest::keyClick(m_window.get(), Qt::Key_Left);
    EXPECT_EQ(m_model->provider(), Provider::Claude);
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QTest::keyClick(m_window.get(), Qt::Key_Return);
    EXPECT_EQ(refresh.size(), 1);
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QTest::keyClick(m_window.get(), Qt::Key_Space);
    EXPECT_EQ(expand.size(), 1);
    QTest::keyClick(m_window.get(), Qt::Key_Tab); // hide
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(m_window.get(), Qt::Key_Right);
    }
    EXPECT_EQ(m_model->tab(), HistoryTab::Sessions);
    settle();
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    for (int i = 0; i < 12; ++i) {
        QTest::keyClick(m_window.get(), Qt::Key_Down);
    }
    settle();
    const auto *list = m_window->rootObject()->findChild<QQuickItem *>(QStringLiteral("sessions"));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->property("currentIndex"), 12) << focused();
    const auto *current = list->property("currentItem").value<QQuickItem *>();
    const auto inSight = [&] {
        const QRectF row = current->mapRectToItem(list, current->boundingRect());
        return list->boundingRect().adjusted(-6, 0, 6, 0).contains(row);
    };
    EXPECT_TRUE(QTest::qWaitFor(inSight));
}

TEST_F(Panel, rollsItsFiguresInPlace)
{
    load(0);
    settle();
    Motion::setReduced(false);
    ParsedStats later;
    later.stats.providers = QMap<QString, ProviderStats> {
        {QStringLiteral("claude"), {StatsTotals {.today = Totals {.cost = 12.59}}}}};
    m_model->loadStats(later);
    const auto rolling = [this] {
        const QStringList seen = texts();
        return seen.contains(QLatin1String("8")) && seen.contains(QLatin1String("9"));
    };
    EXPECT_TRUE(QTest::qWaitFor(rolling)) << "the last digit passes from 8 to 9, each on its own";
    EXPECT_TRUE(QTest::qWaitFor([this] { return texts().contains(QLatin1String("$12.59")); }));
}

TEST_F(Panel, asksToBeMovedOnceAPress)
{
    load(0);
    settle();
    QSignalSpy move(&m_actions, &PanelActions::moveRequested);
    const QPoint empty(m_window->width() / 2, m_window->height() - 6);
    for (int press = 1; press <= 2; ++press) {
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, empty);
        for (int x = 0; x < 40; x += 8) {
            QTest::mouseMove(m_window.get(), empty + QPoint(x, 0));
        }
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, empty + QPoint(40, 0));
        EXPECT_EQ(move.size(), press);
    }
}

} // namespace
