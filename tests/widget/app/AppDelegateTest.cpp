#include "widget/app/AppDelegate.h"

#include "FakeClock.h"
#include "widget/app/FakeNode.h"
#include "widget/app/Promised.h"
#include "widget/views/theme/Motion.h"
#include <QPointer>
#include <QPromise>
#include <QSignalSpy>
#include <QtTest/QTest>

namespace {

using namespace std::chrono_literals;

/// Counts its runs in a file and writes statistics with as many sessions.
constexpr const char *countingIndexer = R"sh(cd "$HOME/.kestrelbay"
echo run >> runs
printf '{"sessions":[%s]}' "$(sed 's/run/{}/' runs | paste -sd,)" > new
mv new stats.json
)sh";

class Delegate : public testing::Test {
protected:
    void SetUp() override
    {
        QDir(Paths::dir()).removeRecursively();
        QFile::remove(Paths::limits());
        installIndexer(countingIndexer);
    }
    void TearDown() override { Motion::setReduced(false); }

    /// Starts and lets the panel appear undisturbed.
    void launch()
    {
        m_delegate.applicationDidFinishLaunching();
        m_clock.advance(1s);
        Motion::setReduced(true); // glides would put things off by real time
    }

    [[nodiscard]] qsizetype sessions() { return m_delegate.model().sessions().size(); }

    [[nodiscard]] bool comesTo(qsizetype sessions)
    {
        return QTest::qWaitFor([&] { return this->sessions() == sessions; }, 20'000);
    }

    FakeClock m_clock {TimePoint(1'772'708'400'000ms)};
    Promised<AccountUsage::AccountOutcome> m_account;
    Promised<UpdateCheck::UpdateOutcome> m_site;
    ReducedMotion m_systemMotion;
    Services m_services {m_clock, [this](QObject *) { return m_account.ask(); },
        [this](const QString &, QObject *) { return m_site.ask(); },
        [this](std::chrono::milliseconds, const std::function<void()> &then) { m_later = then; },
        LoginItem(Paths::launchAgent(), QStringLiteral("/opt/kestrelbay")), m_systemMotion};
    std::function<void()> m_later; ///< the newest of what is put off
    AppDelegate m_delegate {m_services};
};

TEST_F(Delegate, movesNothingBeforeItIsKnownWhetherItMay)
{
    QPromise<std::optional<ProcessResult>> answer;
    answer.start();
    m_systemMotion.watchDefaults([&](auto &&...) { return answer.future(); });
    m_delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(m_delegate.widget().panel().isShown());
    EXPECT_EQ(m_delegate.widget().panel().opacity(), 1);
    answer.addResult(ProcessResult {0, "0"});
    answer.finish();
    EXPECT_TRUE(QTest::qWaitFor([] { return !Motion::reduced(); }));
    m_delegate.widget().hideWidget();
    m_delegate.widget().showWidget();
    EXPECT_LT(m_delegate.widget().panel().opacity(), 1) << "from now on";
}

TEST_F(Delegate, indexesAtTheStartAndShowsWhatComes)
{
    launch();
    EXPECT_TRUE(comesTo(1));
}

TEST_F(Delegate, indexesEveryTenMinutesAndWhenAsked)
{
    launch();
    ASSERT_TRUE(comesTo(1));
    m_clock.advance(599s);
    m_delegate.tick();
    EXPECT_EQ(m_delegate.model().now(), m_clock.now());
    m_clock.advance(1s);
    m_delegate.tick();
    ASSERT_TRUE(comesTo(2));
    Q_EMIT m_delegate.actions().refreshRequested();
    ASSERT_TRUE(comesTo(3));
}

TEST_F(Delegate, noticesAChangedFileByItself)
{
    QFile::remove(Paths::indexer());
    launch();
    writeFile(Paths::stats(), R"({"sessions":[{},{},{},{}]})");
    writeFile(Paths::limits(), R"({"fiveHour":{"percent":42}})");
    EXPECT_TRUE(comesTo(4)) << "the heartbeat is running";
    EXPECT_TRUE(m_delegate.model().limits());
}

TEST_F(Delegate, leavesAPanelThatAppearsAlone)
{
    QFile::remove(Paths::indexer());
    m_delegate.applicationDidFinishLaunching();
    writeFile(Paths::limits(), R"({"fiveHour":{"percent":42}})");
    m_clock.advance(899ms);
    m_delegate.tick();
    EXPECT_EQ(m_account.asked(), 0U);
    EXPECT_FALSE(m_delegate.model().limits() && m_delegate.model().limits()->fiveHour);
    m_clock.advance(1ms);
    m_delegate.tick();
    EXPECT_EQ(m_account.asked(), 1U);
    EXPECT_TRUE(m_delegate.model().limits() && m_delegate.model().limits()->fiveHour);
}

TEST_F(Delegate, advancesTheCountdownsTwiceAMinute)
{
    QFile::remove(Paths::indexer());
    launch();
    QSignalSpy redrawn(&m_delegate.model(), &WidgetModel::nowChanged);
    for (int i = 0; i < 30; ++i) {
        m_clock.advance(2s);
        m_delegate.tick();
    }
    EXPECT_EQ(redrawn.size(), 2);
}

TEST_F(Delegate, doesNotChangeTheChartUnderThePointer)
{
    launch();
    ASSERT_TRUE(comesTo(1));
    // The keyboard's choice of a bar counts as long as the panel has the keyboard.
    ASSERT_TRUE(QTest::qWaitForWindowActive(QGuiApplication::topLevelWindows().constFirst()));
    m_delegate.model().hover().setX(5, HoverState::By::Keyboard);
    writeFile(Paths::stats(), R"({"sessions":[{},{},{},{}]})");
    m_delegate.tick();
    EXPECT_FALSE(QTest::qWaitFor([&] { return sessions() != 1; }, 300)) << "it is held back";
    m_delegate.model().hover().setX({});
    m_delegate.tick();
    EXPECT_TRUE(comesTo(4));

    // A pointer that left without a word.
    m_delegate.model().hover().setX(5);
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    m_delegate.tick();
    EXPECT_FALSE(m_delegate.model().hover().x());
}

TEST_F(Delegate, putsOffWhatViewsAskFor)
{
    launch();
    ASSERT_TRUE(comesTo(1));
    Q_EMIT m_delegate.actions().expandRequested();
    EXPECT_FALSE(StateFile::loadState().expanded);
    m_clock.advance(118s);
    m_later();
    EXPECT_TRUE(StateFile::loadState().expanded);
    m_clock.advance(1s);
    Q_EMIT m_delegate.actions().expandRequested();
    Q_EMIT m_delegate.actions().expandRequested();
    m_later();
    EXPECT_TRUE(comesTo(2)) << "two minutes after the last run there may be another";
}

TEST_F(Delegate, asksForNewsOnRequest)
{
    launch();
    ASSERT_TRUE(comesTo(1));
    m_site.answer(UpdateReply {QStringLiteral("999"), {}});
    EXPECT_EQ(StateFile::loadState().latestVersion, QStringLiteral("999"));
    m_clock.advance(600s);
    Q_EMIT m_delegate.actions().refreshRequested();
    EXPECT_EQ(m_site.asked(), 2U);
    EXPECT_EQ(m_account.asked(), 1U);
    m_account.answer(Limits {.fiveHour = Reading {70, {}}});
    EXPECT_EQ(m_delegate.model().limits()->fiveHour->percent, 70);
}

TEST_F(Delegate, remembersAndShowsEachOption)
{
    using Option = GeneralSettings::Option;
    launch();
    for (const OptionRow &row : optionTable()) {
        if (row.stored == nullptr || row.option == Option::Notch) {
            continue;
        }
        const auto binding = m_delegate.general().binding(row.option);
        for (int flip = 0; flip < 2; ++flip) {
            const bool wanted = !binding.value();
            binding.set(wanted);
            EXPECT_EQ(binding.value(), wanted) << row.key.data();
            EXPECT_EQ(StateFile::loadState().*row.stored, wanted) << row.key.data();
        }
    }
    const auto autostart = m_delegate.general().binding(Option::Autostart);
    autostart.set(true);
    EXPECT_TRUE(autostart.value() && QFile::exists(Paths::launchAgent()));
    autostart.set(false);
    EXPECT_FALSE(autostart.value() || QFile::exists(Paths::launchAgent()));
    Q_EMIT m_delegate.general().viewRequested(ViewMode::Window);
    EXPECT_EQ(StateFile::loadState().view, ViewMode::Window);
    for (const bool on : {false, true}) {
        m_delegate.general().binding(Option::Animations).set(on);
        EXPECT_NE(Motion::reduced(), on);
    }
}

TEST_F(Delegate, comesBackAsItWasLeft)
{
    launch();
    m_delegate.model().selectTab(HistoryTab::Weeks);
    Q_EMIT m_delegate.actions().providerRequested(1);
    Q_EMIT m_delegate.actions().expandRequested();
    m_delegate.applicationWillTerminate();

    AppDelegate next(m_services);
    next.applicationDidFinishLaunching();
    EXPECT_EQ(next.model().tab(), HistoryTab::Weeks);
    EXPECT_EQ(next.model().provider(), Provider::Codex);
    EXPECT_TRUE(next.model().expanded());
}

TEST_F(Delegate, keepsItsSettingsFreshWhileTheyAreOpen)
{
    launch();
    ASSERT_TRUE(comesTo(1));
    writeFile(Paths::syncStatus(), R"({"name":"Laptop"})");
    Q_EMIT m_delegate.actions().settingsRequested();
    const QPointer<SettingsWindow> window = m_delegate.settings();
    ASSERT_TRUE(window);
    EXPECT_EQ(m_delegate.syncSettings().name(), QStringLiteral("Laptop"));
    m_delegate.openSettings();
    EXPECT_EQ(m_delegate.settings(), window);

    writeFile(Paths::syncStatus(), R"({"name":"Desktop"})");
    Q_EMIT m_delegate.actions().refreshRequested(); // the run's end has the file read again
    ASSERT_TRUE(comesTo(2));
    EXPECT_EQ(m_delegate.syncSettings().name(), QStringLiteral("Desktop"));

    m_delegate.syncSettings().enterPassword(QStringLiteral("secret"));
    window->close();
    EXPECT_TRUE(m_delegate.syncSettings().password().isEmpty());
    EXPECT_EQ(m_delegate.settings(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&window] { return window.isNull(); }));
}

TEST_F(Delegate, takesTheStatisticsAnewWhenSyncHasChangedThem)
{
    QFile::remove(Paths::indexer());
    launch();
    writeVersion(Paths::stats(), R"({"sessions":[{}]})", 1'700'000'000);
    ASSERT_TRUE(comesTo(1));
    writeVersion(Paths::stats(), R"({"sessions":[{},{}]})", 1'700'000'000);
    m_clock.advance(2s); // the panel is at rest
    m_delegate.syncChanged();
    EXPECT_TRUE(comesTo(2));
}

} // namespace
