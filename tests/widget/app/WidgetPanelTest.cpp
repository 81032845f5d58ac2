#include "widget/app/WidgetPanel.h"

#include "FakeClock.h"
#include "widget/model/Dashboard.h"
#include "widget/platform/DesktopWatch.h"
#include "widget/views/PanelActions.h"
#include "widget/views/theme/Motion.h"
#include <gtest/gtest.h>
#include <QtTest/QTest>

namespace {

using namespace std::chrono_literals;

class Widget : public testing::Test {
protected:
    void SetUp() override { m_model.setMode(ViewMode::Icon); }
    void TearDown() override { Motion::setReduced(false); }

    [[nodiscard]] FloatingPanel &panel() { return m_widget.panel(); }
    [[nodiscard]] bool comesToRest()
    {
        return QTest::qWaitFor([this] { return !m_widget.gliding(); })
            && QTest::qWaitFor([this] { return panel().opacity() == 1; });
    }
    void wake()
    {
        for (const auto &then : std::exchange(m_later, {})) {
            then();
        }
    }

    FakeClock m_clock {TimePoint(1'772'708'400'000ms)};
    std::optional<QRect> m_item {QRect(400, 0, 20, 20)};
    std::vector<std::function<void()>> m_later;
    DesktopWatch m_desktop;
    WidgetModel m_model {m_clock, [] { return QStringList(); }};
    Dashboard m_dashboard {m_model};
    PanelActions m_actions {nullptr};
    WidgetPanel m_widget {
        {m_model, m_desktop, m_clock, [this](auto, const auto &then) { m_later.push_back(then); },
            [this] { return m_item; }},
        m_dashboard, m_actions};
};

TEST_F(Widget, dropsFromItsItemFadesInAndFadesOut)
{
    m_widget.appear();
    EXPECT_FALSE(panel().isShown()); // the tray has not placed the item yet
    wake();
    EXPECT_TRUE(panel().isShown());
    EXPECT_LT(panel().opacity(), 0.5);
    EXPECT_LT(panel().frame().y(), 26);
    EXPECT_TRUE(m_widget.isBusy());
    wake();
    EXPECT_TRUE(m_model.revealed());
    ASSERT_TRUE(comesToRest());
    EXPECT_EQ(panel().frame().center().x(), 410);
    EXPECT_EQ(panel().frame().y(), 26); // below the bar that the item is in

    QTest::keyClick(&panel(), Qt::Key_Escape);
    EXPECT_FALSE(m_widget.wantsVisible());
    EXPECT_TRUE(panel().isShown());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !panel().isShown(); }));
    EXPECT_EQ(panel().opacity(), 1);
    EXPECT_FALSE(m_model.revealed());
}

TEST_F(Widget, appearsAndFadesThroughAChangeOfItsSize)
{
    m_widget.appear();
    wake();
    m_model.setExpanded(true);
    ASSERT_TRUE(comesToRest());
    EXPECT_EQ(panel().frame().size(), panel().contentSize());
    m_widget.hideWidget();
    m_model.setExpanded(false);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !panel().isShown(); }));
    EXPECT_EQ(panel().opacity(), 1);
}

TEST_F(Widget, staysWhenItIsShownAgainWhileItFades)
{
    m_widget.appear();
    wake();
    ASSERT_TRUE(comesToRest());
    m_widget.hideWidget();
    m_widget.showWidget();
    wake();
    ASSERT_TRUE(comesToRest());
    QTest::qWait(200); // longer than the fade
    EXPECT_TRUE(panel().isShown());
    EXPECT_TRUE(m_model.revealed());
    // A press that hid it is not one that shows it, though it may be one on the item.
    m_clock.advance(1s);
    Q_EMIT m_desktop.pressed();
    m_widget.statusClicked();
    EXPECT_FALSE(m_widget.wantsVisible());
}

TEST_F(Widget, takesTheNewestSizeAndComesBackToTheSamePlace)
{
    m_model.setMode(ViewMode::Window);
    m_widget.appear();
    ASSERT_TRUE(comesToRest());
    const QRectF start = panel().frame();
    for (const bool expanded : {true, false, true}) {
        m_widget.noteToggle();
        m_model.setExpanded(expanded);
        QTest::qWait(60); // in the middle of the glide before
    }
    ASSERT_TRUE(comesToRest());
    EXPECT_EQ(panel().frame().size(), panel().contentSize());
    EXPECT_EQ(panel().frame().bottomRight(), start.bottomRight());
    m_model.setExpanded(false);
    QTest::qWait(20);
    m_clock.advance(10s); // and one that never ends is ended by the heartbeat
    EXPECT_FALSE(m_widget.isBusy());
    EXPECT_EQ(panel().frame(), start);
}

TEST_F(Widget, doesNotMoveUnderReducedMotion)
{
    Motion::setReduced(true);
    m_widget.appear();
    wake();
    EXPECT_EQ(panel().opacity(), 1);
    EXPECT_EQ(panel().frame().y(), 26); // below the bar that the item is in
    EXPECT_FALSE(m_widget.gliding());
    m_widget.hideWidget();
    EXPECT_FALSE(panel().isShown());
}

TEST_F(Widget, standsAsAWindowUntilThereIsATray)
{
    m_item.reset();
    m_widget.appear();
    EXPECT_EQ(m_widget.mode(), ViewMode::Window);
    EXPECT_TRUE(panel().isShown());
    Q_EMIT m_desktop.desktopSwitched();
    EXPECT_TRUE(m_widget.wantsVisible());
    m_item = QRect(400, 0, 20, 20);
    m_widget.followTray();
    ASSERT_TRUE(comesToRest());
    EXPECT_EQ(panel().frame().center().x(), 410);
    EXPECT_EQ(m_model.mode(), ViewMode::Icon); // as the user chose
    Q_EMIT m_desktop.desktopSwitched();
    EXPECT_FALSE(m_widget.wantsVisible());
}

TEST_F(Widget, changesItsView)
{
    m_widget.appear();
    wake();
    m_widget.setView(ViewMode::Window);
    ASSERT_TRUE(comesToRest());
    EXPECT_TRUE(m_widget.wantsVisible());
    EXPECT_TRUE(panel().flags() & Qt::WindowStaysOnTopHint);
    m_model.setTopmost(false);
    m_widget.applyLevel();
    EXPECT_FALSE(panel().flags() & Qt::WindowStaysOnTopHint);
    const QRectF frame = panel().frame();
    m_widget.setView(ViewMode::Window); // as it is: nothing happens
    EXPECT_EQ(panel().frame(), frame);
    EXPECT_FALSE(m_widget.gliding());
}

} // namespace
