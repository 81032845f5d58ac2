#include "pictures/Canned.h"
#include "pictures/Stage.h"
#include "widget/core/Paths.h"
#include "widget/views/theme/Metrics.h"
#include "widget/views/theme/Motion.h"
#include "widget/views/VisibleTexts.h"
#include <gtest/gtest.h>
#include <QAccessible>
#include <QFile>
#include <QSignalSpy>
#include <QtTest/QTest>

namespace {

class Panel : public testing::Test {
protected:
    void SetUp() override
    {
        Motion::setReduced(true);
        m_stage.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_stage.window()));
        m_stage.window().requestActivate();
    }

    void TearDown() override { Motion::setReduced(false); }

    void load(int sessions)
    {
        m_stage.model().loadStats(Canned::statistics({.sessions = sessions}));
        EXPECT_TRUE(m_stage.settle());
    }

    [[nodiscard]] bool shows(const char *text)
    {
        return visibleTexts(*m_stage.window().rootObject()).contains(QLatin1String(text));
    }

    void press(std::initializer_list<Qt::Key> keys)
    {
        for (const Qt::Key key : keys) {
            QTest::keyClick(&m_stage.window(), key);
        }
        EXPECT_TRUE(m_stage.settle());
    }

    [[nodiscard]] QQuickItem &sessions()
    {
        return *m_stage.window().rootObject()->findChild<QQuickItem *>(u"sessions"_qs);
    }

    Stage m_stage;
    WidgetModel &m_model = m_stage.model();
};

TEST_F(Panel, isCompactOrWide)
{
    EXPECT_TRUE(shows("collecting") && !shows("today"));
    load(3);
    EXPECT_TRUE(shows("$12.48") && !shows("$388"));
    EXPECT_EQ(m_stage.window().width(), qRound(Metrics::compactBody()) + 28);
    m_model.setExpanded(true);
    EXPECT_TRUE(m_stage.settle());
    EXPECT_TRUE(shows("$388"));
    EXPECT_EQ(m_stage.window().width(), qRound(Metrics::wideBody()) + 28);
}

/// The property of that name of each item that has one.
QList<double> valuesOf(const QQuickItem &panel, const char *property)
{
    QList<double> values;
    const std::function<void(const QQuickItem &)> look = [&](const QQuickItem &item) {
        if (const QVariant value = item.property(property); value.isValid()) {
            values << value.toDouble();
        }
        std::ranges::for_each(item.childItems(), [&](const QQuickItem *child) { look(*child); });
    };
    look(panel);
    return values;
}

/// Whether each of so many bars has grown, however and whenever they came.
bool areGrown(const QQuickItem &panel, qsizetype count)
{
    return valuesOf(panel, "growth") == QList<double>(count, 1);
}

TEST_F(Panel, growsItsBarsWhenTheyComeAndWhenMoreDo)
{
    m_model.setExpanded(true);
    for (const bool reduced : {true, false}) {
        Motion::setReduced(reduced);
        for (const int days : {1, 14, 3}) {
            m_model.loadStats(Canned::statistics({.days = days, .sessions = 1}));
            EXPECT_TRUE(m_stage.settle());
            const qsizetype bars = m_model.series().bars.size();
            EXPECT_TRUE(areGrown(*m_stage.window().rootObject(), bars)) << days << ' ' << reduced;
            Motion::setReduced(false); // what was still grows none the less
            EXPECT_TRUE(areGrown(*m_stage.window().rootObject(), bars)) << days << ' ' << reduced;
        }
    }
}

TEST_F(Panel, comesBackAsWhatChangedWhileItWasAway)
{
    const auto use = [this](double percent) {
        m_model.setLimits(Limits {.fiveHour = Reading {percent, {}}});
        return valuesOf(*m_stage.window().rootObject(), "fill").value(0, -1);
    };
    Motion::setReduced(false);
    m_model.conceal();
    EXPECT_EQ(use(80), 0.8);
    EXPECT_EQ(use(20), 0.2);
    m_model.setRevealed(true);
    EXPECT_EQ(use(60), 0.2) << "on its way";
}

TEST_F(Panel, boundsTheSessionListAndMakesOnlyTheRowsInSight)
{
    m_model.setExpanded(true);
    m_model.selectTab(HistoryTab::Sessions);
    load(0);
    EXPECT_TRUE(shows("No sessions yet"));
    load(10'000);
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return sessions().height() == Metrics::sessionsMaxHeight(); }));
    const auto *rows = sessions().property("contentItem").value<QQuickItem *>();
    ASSERT_TRUE(rows);
    EXPECT_GT(rows->childItems().size(), 7);
    EXPECT_LT(rows->childItems().size(), 40);
}

/// Whether all of an item is where the panel shows it.
bool isInSight(const QQuickItem &item, const QQuickWindow &window)
{
    const QRectF frame = item.mapRectToScene(item.boundingRect());
    return frame.top() >= 0 && frame.bottom() <= window.height();
}

TEST_F(Panel, keepsToTheRoomThereIs)
{
    m_model.setExpanded(true);
    m_model.selectTab(HistoryTab::Sessions);
    load(30);
    ASSERT_TRUE(QTest::qWaitFor([this] { return sessions().height() > 0 && m_stage.settle(); }));
    FloatingPanel &window = m_stage.window();
    const int whole = window.height();
    const auto turnWheel = [&](int angle) {
        const QPointF place(window.width() / 2, 120);
        QWheelEvent turn(place, place, {}, {0, angle}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&window, &turn);
    };
    for (const int less : {0, 100, 250, 400}) {
        window.setRoom(whole - less);
        EXPECT_TRUE(m_stage.settle());
        EXPECT_EQ(window.height(), whole - less);
        EXPECT_EQ(sessions().height(),
            std::max(Metrics::sessionsMaxHeight() - less, 3 * Metrics::sessionRow()));
        turnWheel(-120 * 20);
        EXPECT_TRUE(QTest::qWaitFor([&] { return isInSight(sessions(), window); })) << less;
        turnWheel(120 * 20);
    }
    m_model.selectTab(HistoryTab::Days);
    EXPECT_TRUE(m_stage.settle());
    while (!window.activeFocusItem()->inherits("HistoryChart")) {
        press({Qt::Key_Tab});
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return isInSight(*window.activeFocusItem(), window); }));
}

TEST_F(Panel, keepsItsHeightWhileTimePasses)
{
    ASSERT_TRUE(Stage::furnishHome(QStringLiteral(KESTRELBAY_SOURCE "/companions/i18n.json")));
    for (const char *language : {"en", "de", "ru"}) {
        Stage stage;
        stage.model().setLanguage(QLatin1String(language));
        stage.model().loadStats(Canned::statistics());
        stage.model().setLimits(Canned::limits(91, 62));
        stage.show();
        QList<int> heights;
        for (int minutes = 0; minutes < 240; minutes += 5) {
            stage.model().setNow(Canned::now() + std::chrono::minutes(minutes));
            EXPECT_TRUE(stage.settle());
            heights << stage.window().height();
        }
        EXPECT_TRUE(std::ranges::is_sorted(heights)) << language;
    }
    QFile::remove(Paths::i18n());
}

TEST_F(Panel, foldsByADoubleClickBesideTheHistoryAlone)
{
    m_model.setExpanded(true);
    load(3);
    QSignalSpy fold(&m_stage.actions(), &PanelActions::expandRequested);
    const int middle = m_stage.window().width() / 2;
    for (const auto &[y, folds] : {std::pair(m_stage.window().height() - 80, 0), std::pair(6, 1)}) {
        QTest::mouseDClick(&m_stage.window(), Qt::LeftButton, {}, {middle, y});
        EXPECT_EQ(fold.size(), folds) << y;
    }
}

TEST_F(Panel, fadesTheTipOfABarAlsoUnderReducedMotion)
{
    m_model.setExpanded(true);
    load(3);
    const auto *tip = m_stage.window().rootObject()->findChild<QQuickItem *>(u"tip"_qs);
    ASSERT_TRUE(tip);
    m_model.hover().setX(300);
    EXPECT_LT(tip->opacity(), 1);
    EXPECT_TRUE(QTest::qWaitFor([tip] { return tip->opacity() == 1; }));
}

TEST_F(Panel, worksByKeyboardAlone)
{
    m_model.setExpanded(true);
    load(30);
    QStringList asked;
    QObject::connect(&m_stage.actions(), &PanelActions::providerRequested, [&](int index) {
        asked << Dashboard::providerNames().at(index);
        m_model.setProvider(Dashboard::provider(index));
    });
    QObject::connect(
        &m_stage.actions(), &PanelActions::refreshRequested, [&] { asked << u"refresh"_qs; });
    QObject::connect(
        &m_stage.actions(), &PanelActions::expandRequested, [&] { asked << u"expand"_qs; });
    QObject::connect(
        &m_stage.actions(), &PanelActions::settingsRequested, [&] { asked << u"settings"_qs; });
    press({Qt::Key_Tab, Qt::Key_Right, Qt::Key_Left, Qt::Key_Tab, Qt::Key_Return, Qt::Key_Tab,
        Qt::Key_Space, Qt::Key_Tab, Qt::Key_Return});
    EXPECT_EQ(asked.join(u' '), u"Codex Claude refresh expand settings");
    press({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right}); // past "hide"
    EXPECT_EQ(m_model.tab(), HistoryTab::Sessions);
    press({Qt::Key_Tab});
    for (int i = 0; i < 12; ++i) {
        press({Qt::Key_Down});
    }
    EXPECT_EQ(sessions().property("currentIndex"), 12);
    const auto *current = sessions().property("currentItem").value<QQuickItem *>();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const QRectF row = current->mapRectToItem(&sessions(), current->boundingRect());
        return sessions().boundingRect().adjusted(-6, 0, 6, 0).contains(row);
    })) << "it is scrolled into sight";
}

/// All that a screen reader would read out, one after another.
QString spoken(const QAccessibleInterface &from)
{
    QString names = from.text(QAccessible::Name) % u'\n';
    for (int i = 0; i < from.childCount(); ++i) {
        names += spoken(*from.child(i));
    }
    return names;
}

TEST_F(Panel, speaksOfAnUpdateOnlyWhileThereIsOne)
{
    load(3);
    const auto isSpokenOf = [this] {
        return spoken(*QAccessible::queryAccessibleInterface(&m_stage.window()))
            .contains(m_stage.dashboard().texts().update);
    };
    EXPECT_FALSE(isSpokenOf());
    for (const bool isOffered : {true, false}) {
        m_model.setUpdate(isOffered ? std::optional(u"9.9.9"_qs) : std::nullopt);
        EXPECT_TRUE(m_stage.settle());
        EXPECT_EQ(isSpokenOf(), isOffered);
    }
}

TEST_F(Panel, asksToBeMovedOnceAPress)
{
    load(0);
    QWindow *window = &m_stage.window();
    QSignalSpy move(&m_stage.actions(), &PanelActions::moveRequested);
    const QPoint empty(window->width() / 2, window->height() - 6);
    for (int press = 1; press <= 2; ++press) {
        QTest::mousePress(window, Qt::LeftButton, {}, empty);
        for (int x = 0; x < 40; x += 8) {
            QTest::mouseMove(window, empty + QPoint(x, 0));
        }
        QTest::mouseRelease(window, Qt::LeftButton, {}, empty + QPoint(40, 0));
        EXPECT_EQ(move.size(), press);
    }
}

} // namespace
