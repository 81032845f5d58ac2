#include "ModelFixture.h"

#include "text/Strings.h"
#include <ctime>
#include <QSignalSpy>

namespace {

using namespace std::chrono;

class Model : public ModelFixture { };

TEST_F(Model, startsInEnglishAndFollowsTheSystemWhenToldTo)
{
    EXPECT_EQ(m_model->langCode(), u"en");
    m_system = QStringList {u"de-CH"_qs};
    m_model->setLanguage({});
    EXPECT_EQ(m_model->langCode(), u"de");
    EXPECT_EQ(m_model->note(), u"Wird gesammelt");
    EXPECT_EQ(m_model->t(u"today"_qs), u"Today");
    EXPECT_EQ(m_model->tabName(HistoryTab::Weeks), u"Weeks");
    EXPECT_EQ(m_model->languageName(u"de"_qs), u"Deutsch");
    EXPECT_EQ(m_model->languageName(u"xx"_qs), u"xx");

    // A language that is gone falls back without being forgotten.
    m_model->setLanguage(u"xx"_qs);
    EXPECT_EQ(m_model->langCode(), u"de");
    EXPECT_EQ(m_model->langPref(), u"xx");
}

TEST_F(Model, beginsOnTopAndHidden)
{
    EXPECT_TRUE(m_model->topmost() && m_model->mode() == ViewMode::Icon);
    EXPECT_FALSE(m_model->revealed() || m_model->expanded() || m_model->noNode());
    EXPECT_TRUE(m_model->series() == Series() && m_model->now() == m_clock.now());
}

TEST_F(Model, notifiesOfEqualValuesToo)
{
    using M = WidgetModel;
    const struct {
        void (M::*signal)();
        void (*assign)(M &);
    } rows[] = {{&M::stringsChanged, [](M &m) { m.setLanguage({}); }},
        {&M::limitsChanged, [](M &m) { m.setLimits({}); }},
        {&M::codexChanged, [](M &m) { m.setCodex({}); }},
        {&M::providerChanged, [](M &m) { m.setProvider(Provider::Claude); }},
        {&M::nowChanged, [](M &m) { m.setNow(m.now()); }},
        {&M::statsChanged, [](M &m) { m.loadStats({}); }},
        {&M::sessionsChanged, [](M &m) { m.loadStats({}); }},
        {&M::seriesChanged, [](M &m) { m.rebuild(); }},
        {&M::tabChanged, [](M &m) { m.selectTab(HistoryTab::Days); }},
        {&M::expandedChanged, [](M &m) { m.setExpanded(false); }},
        {&M::topmostChanged, [](M &m) { m.setTopmost(true); }},
        {&M::modeChanged, [](M &m) { m.setMode(ViewMode::Icon); }},
        {&M::updateChanged, [](M &m) { m.setUpdate({}); }},
        {&M::noNodeChanged, [](M &m) { m.setNoNode(false); }},
        {&M::revealedChanged, [](M &m) { m.setRevealed(false); }}};
    for (const auto &row : rows) {
        const QSignalSpy spy(m_model.get(), row.signal);
        row.assign(*m_model);
        row.assign(*m_model);
        EXPECT_EQ(spy.size(), 2) << spy.signal().constData();
    }
}

TEST_F(Model, saysWhyThereIsNothingAndKeepsTheLastGoodData)
{
    EXPECT_EQ(m_model->note(), u"Collecting");
    m_model->setCollectFailed(true);
    EXPECT_TRUE(m_model->note().contains(u"widget.log"));
    m_model->setCollectFailed(false);
    m_model->setUnreadable(true);
    EXPECT_TRUE(m_model->note().startsWith(u"The statistics cannot be read"));
    m_model->setNoNode(true);
    EXPECT_EQ(m_model->note(), u"Node is missing");

    m_model->loadStats(parsed());
    m_model->setUnreadable(true);
    EXPECT_TRUE(m_model->note().isEmpty());
    EXPECT_EQ(m_model->sessions().size(), 4);
}

TEST_F(Model, scrollsAsFarAsThereAreBars)
{
    m_model->loadStats(parsed(17));
    const QSignalSpy rebuilt(m_model.get(), &WidgetModel::seriesChanged);
    const struct {
        qint64 steps;
        qint64 offset;
        int rebuilds;
    } rows[] = {{0, 0, 0}, {-1, 0, 0}, {2, 2, 1}, {5, 3, 1}, {1, 3, 0}, {-1, 2, 1}, {-9, 0, 1}};
    for (const auto &row : rows) {
        const auto before = rebuilt.size();
        m_model->move(row.steps);
        EXPECT_EQ(m_model->offset(), row.offset) << row.steps;
        EXPECT_EQ(m_model->series().offset, row.offset) << row.steps;
        EXPECT_EQ(rebuilt.size() - before, row.rebuilds) << row.steps;
    }
}

TEST_F(Model, staysOnItsPageUntilTheTabIsChosen)
{
    m_model->loadStats(parsed(20));
    m_model->move(5);
    m_model->setLanguage(u"de"_qs);
    m_model->rebuild();
    m_model->loadStats(parsed(19));
    EXPECT_EQ(m_model->offset(), 5);
    EXPECT_EQ(m_model->series().bars.last().label, u"28 Feb");
    m_model->loadStats(parsed(16)); // which leaves two bars off the page
    EXPECT_EQ(m_model->offset(), 2);

    m_model->hover().setX(10);
    m_model->selectTab(HistoryTab::Days);
    EXPECT_EQ(m_model->offset(), 0);
    EXPECT_FALSE(m_model->hover().x());
    EXPECT_EQ(m_model->series().bars.last().label, u"5 Mar");
    m_model->hover().setX(10);
    m_model->setLanguage({});
    EXPECT_EQ(m_model->hover().x(), 10);
    m_model->selectTab(HistoryTab::Sessions);
    EXPECT_TRUE(m_model->series().bars.isEmpty());
}

TEST_F(Model, readsTheDatesOfATabOncePerLoad)
{
    // A day that was read in Berlin begins on the evening before in New York.
    const auto newest = [this] { return m_model->series().bars.last().label.toStdString(); };
    const QByteArray zone = qgetenv("TZ");
    m_model->loadStats(parsed());
    qputenv("TZ", "America/New_York");
    tzset();
    m_model->selectTab(HistoryTab::Months);
    m_model->selectTab(HistoryTab::Days);
    m_model->setLanguage({});
    m_model->rebuild();
    EXPECT_EQ(newest(), "4 Mar");
    m_model->loadStats(parsed());
    EXPECT_EQ(newest(), "5 Mar");
    qputenv("TZ", zone);
    tzset();
}

TEST_F(Model, showsTheLimitsOfTheProvider)
{
    const Limits claude {m_clock.now() - 2h, Reading {1, {}}};
    CodexLimits codex {{m_clock.now(), Reading {2, {}}}, Seconds(60), Seconds(120), {}};
    m_model->setLimits(claude);
    using Lengths = std::pair<Seconds, Seconds>;
    const Lengths usual(18'000s, 604'800s);

    m_model->setProvider(Provider::Codex);
    EXPECT_FALSE(m_model->shownLimits());
    EXPECT_TRUE(m_model->windowLengths() == usual);
    EXPECT_TRUE(m_model->freshness() == Freshness());
    m_model->setCodex(codex);
    EXPECT_TRUE(m_model->shownLimits() == codex.limits);
    EXPECT_TRUE(m_model->windowLengths() == Lengths(60s, 120s));
    EXPECT_TRUE(m_model->freshness().fresh);
    m_model->setProvider(Provider::Claude);
    EXPECT_TRUE(m_model->shownLimits() == claude);
    EXPECT_TRUE(m_model->windowLengths() == usual);
    EXPECT_FALSE(m_model->freshness().fresh);
}

TEST_F(Model, concealsAtOnce)
{
    m_model->setRevealed(true);
    QList<bool> instant;
    QObject::connect(m_model.get(), &WidgetModel::revealedChanged, m_model.get(),
        [&] { instant << (m_model->instant() && !m_model->revealed()); });
    m_model->conceal();
    m_model->setRevealed(false);
    EXPECT_EQ(instant, (QList<bool> {true, false}));
}

} // namespace
