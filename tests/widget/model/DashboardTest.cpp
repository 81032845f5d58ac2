#include "ModelFixture.h"

#include "widget/model/Dashboard.h"
#include <QSignalSpy>

namespace {

using namespace std::chrono;

class DashboardOfModel : public ModelFixture {
protected:
    void SetUp() override
    {
        ModelFixture::SetUp();
        m_dashboard = std::make_unique<Dashboard>(*m_model);
    }

    [[nodiscard]] std::string limits() const
    {
        QStringList rows;
        for (const LimitRow &row : m_dashboard->limits()) {
            rows << row.spoken;
        }
        return rows.join(u'|').toStdString();
    }

    std::unique_ptr<Dashboard> m_dashboard;
};

TEST_F(DashboardOfModel, drawsTheLimitsOfTheProvider)
{
    EXPECT_EQ(limits(), "5 hours, —, No data|Week, —, No data");
    m_model->setLimits(Limits {m_clock.now() - 2h, {}, Reading {90, {}}});
    EXPECT_EQ(limits(), "5 hours, —, No data|Week, 90%");
    EXPECT_FALSE(m_dashboard->freshness().fresh);
    const LimitRow week = m_dashboard->limits().last();
    EXPECT_EQ(week.fillColor, QColor(0xFF, 0x45, 0x3A));
    EXPECT_TRUE(week.fill == 0.9 && week.value == 90 && !week.hasPace);

    m_model->setProvider(Provider::Codex);
    EXPECT_EQ(limits(), "5 hours, —, No data|Week, —, No data");
    EXPECT_TRUE(m_dashboard->freshness() == Freshness());
    m_model->setCodex(CodexLimits {{m_clock.now(), Reading {1, m_clock.now()}}, 2h, 24h, {}});
    EXPECT_EQ(limits(), "2h, 0%, windowReset|1d, —, No data");
    EXPECT_TRUE(m_dashboard->freshness().fresh);
}

TEST_F(DashboardOfModel, listsTheSessionsOfTheProviderAndRelabelsThemAtMidnight)
{
    m_model->loadStats(parsed());
    EXPECT_EQ(m_dashboard->sessions()->rowCount(), 2);
    m_model->setProvider(Dashboard::provider(1));
    EXPECT_EQ(Dashboard::providerNames().at(m_dashboard->providerIndex()), u"Codex");
    EXPECT_EQ(m_dashboard->sessions()->rowCount(), 1);
    m_dashboard->selectTab(3);
    EXPECT_TRUE(m_dashboard->listsSessions());
    EXPECT_EQ(m_dashboard->tabNames().at(m_dashboard->tab()), u"tabSessions");
    // A second dashboard begins with what the model has.
    EXPECT_EQ(Dashboard(*m_model).sessions()->rowCount(), 1);

    const QSignalSpy relabelled(m_dashboard->sessions(), &QAbstractItemModel::dataChanged);
    const std::pair<milliseconds, int> rows[] = {
        {11h + 59min + 59s + 999ms, 0}, {1ms, 1}, {0s, 1}, {23h, 1}, {1h, 2}, {-1ms, 3}};
    for (const auto &[later, times] : rows) {
        m_clock.advance(later);
        m_model->setNow(m_clock.now());
        EXPECT_EQ(relabelled.size(), times) << later.count();
    }
}

TEST_F(DashboardOfModel, announcesWhateverAChangeChangesAlsoOfEqualValues)
{
    using D = Dashboard;
    using M = WidgetModel;
    const std::pair<void (*)(M &), QList<void (D::*)()>> rows[] = {
        {[](M &m) { m.setLanguage(u"de"_qs); },
            {&D::textsChanged, &D::limitsChanged, &D::summaryChanged, &D::noteChanged,
                &D::periodChanged, &D::seriesChanged}},
        {[](M &m) { m.setProvider(Provider::Codex); },
            {&D::providerChanged, &D::limitsChanged, &D::summaryChanged}},
        {[](M &m) { m.loadStats(parsed()); },
            {&D::summaryChanged, &D::noteChanged, &D::periodChanged, &D::seriesChanged}},
        {[](M &m) { m.selectTab(HistoryTab::Sessions); },
            {&D::tabChanged, &D::periodChanged, &D::seriesChanged}},
        {[](M &m) { m.setNoNode(true); }, {&D::noteChanged, &D::periodChanged}},
        {[](M &m) { m.setUnreadable(true); }, {&D::noteChanged}},
        {[](M &m) { m.setCollectFailed(true); }, {&D::noteChanged}},
        {[](M &m) { m.setNow(m.now()); }, {&D::limitsChanged}},
        {[](M &m) { m.setLimits(Limits()); }, {&D::limitsChanged}},
        {[](M &m) { m.setCodex(CodexLimits()); }, {&D::limitsChanged}},
        {[](M &m) { m.setExpanded(true); }, {&D::expandedChanged}},
        {[](M &m) { m.setTopmost(false); }, {&D::topmostChanged}},
        {[](M &m) { m.setMode(ViewMode::Window); }, {&D::modeChanged}},
        {[](M &m) { m.setUpdate(u"2.0"_qs); }, {&D::updateChanged, &D::textsChanged}}};
    for (const auto &row : rows) {
        for (const auto signal : row.second) {
            const QSignalSpy spy(m_dashboard.get(), signal);
            row.first(*m_model);
            row.first(*m_model);
            EXPECT_GE(spy.size(), 2) << spy.signal().constData() << ", row " << &row - rows;
        }
    }
    EXPECT_TRUE(m_dashboard->expanded() && m_dashboard->pinnable() && !m_dashboard->pinned());
    EXPECT_TRUE(m_dashboard->updateOffered());
}

} // namespace
