#include "ModelFixture.h"

#include "model/Dashboard.h"
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
    m_model->setLimits(Limits {{}, {}, Reading {90, {}}});
    EXPECT_EQ(limits(), "5 hours, —, No data|Week, 90%");
    const LimitRow week = m_dashboard->limits().last();
    EXPECT_EQ(week.fillColor, QColor(0xFF, 0x45, 0x3A));
    EXPECT_EQ(week.percentColor.rgba(), 0xFFFF453A);
    EXPECT_TRUE(week.fill == 0.9 && week.value == 90 && !week.hasPace);

    m_model->setProvider(Provider::Codex);
    EXPECT_EQ(limits(), "5 hours, —, No data|Week, —, No data");
    m_model->setCodex(CodexLimits {{{}, Reading {1, m_clock.now()}}, 2h, 24h, {}});
    EXPECT_EQ(limits(), "2h, 0%, windowReset|1d, —, No data");
}

TEST_F(DashboardOfModel, listsTheSessionsOfTheProvider)
{
    EXPECT_EQ(m_dashboard->sessions()->rowCount(), 0);
    m_model->loadStats(parsed());
    EXPECT_EQ(m_dashboard->sessions()->rowCount(), 2);
    m_model->setProvider(Dashboard::provider(1));
    EXPECT_EQ(m_model->provider(), Provider::Codex);
    EXPECT_EQ(m_dashboard->providerIndex(), 1);
    EXPECT_EQ(Dashboard::providerNames().at(1), u"Codex");
    EXPECT_EQ(m_dashboard->sessions()->rowCount(), 1);
    m_dashboard->selectTab(3);
    EXPECT_TRUE(m_dashboard->listsSessions() && m_model->tab() == HistoryTab::Sessions);
    EXPECT_EQ(m_dashboard->tabNames().at(m_dashboard->tab()), u"tabSessions");
    // A second dashboard begins with what the model has.
    EXPECT_EQ(Dashboard(*m_model).sessions()->rowCount(), 1);
}

TEST_F(DashboardOfModel, relabelsSessionsAtMidnightOnly)
{
    m_model->loadStats(parsed());
    const QSignalSpy relabelled(m_dashboard->sessions(), &QAbstractItemModel::dataChanged);
    const std::pair<milliseconds, int> rows[] = {
        {11h + 59min, 0}, {59s + 999ms, 0}, {1ms, 1}, {0s, 1}, {23h, 1}, {1h, 2}, {-1ms, 3}};
    for (const auto &[later, times] : rows) {
        m_clock.advance(later);
        m_model->setNow(m_clock.now());
        EXPECT_EQ(relabelled.size(), times) << later.count();
    }
}

TEST_F(DashboardOfModel, announcesWhateverAChangeChanges)
{
    using D = Dashboard;
    using M = WidgetModel;
    const struct {
        void (*change)(M &);
        QList<void (D::*)()> announced;
    } rows[] = {{[](M &m) { m.setLanguage(u"de"_qs); },
                    {&D::textsChanged, &D::limitsChanged, &D::summaryChanged, &D::noteChanged,
                        &D::periodChanged, &D::seriesChanged}},
        {[](M &m) { m.setProvider(Provider::Codex); },
            {&D::providerChanged, &D::limitsChanged, &D::summaryChanged}},
        {[](M &m) { m.loadStats(parsed()); },
            {&D::summaryChanged, &D::noteChanged, &D::periodChanged, &D::seriesChanged}},
        {[](M &m) { m.selectTab(HistoryTab::Sessions); },
            {&D::tabChanged, &D::periodChanged, &D::seriesChanged}},
        {[](M &m) { m.rebuild(); }, {&D::seriesChanged}},
        {[](M &m) { m.setNoNode(true); }, {&D::noteChanged, &D::periodChanged}},
        {[](M &m) { m.setUnreadable(true); }, {&D::noteChanged}},
        {[](M &m) { m.setCollectFailed(true); }, {&D::noteChanged}},
        {[](M &m) { m.setNow(m.now() + 1s); }, {&D::limitsChanged}},
        {[](M &m) { m.setLimits(Limits()); }, {&D::limitsChanged}},
        {[](M &m) { m.setCodex(CodexLimits()); }, {&D::limitsChanged}},
        {[](M &m) { m.setExpanded(true); }, {&D::expandedChanged}},
        {[](M &m) { m.setTopmost(false); }, {&D::topmostChanged}},
        {[](M &m) { m.setMode(ViewMode::Window); }, {&D::modeChanged}},
        {[](M &m) { m.setUpdate(u"2.0"_qs); }, {&D::updateChanged, &D::textsChanged}}};
    for (const auto &row : rows) {
        std::vector<std::unique_ptr<QSignalSpy>> spies;
        for (const auto signal : row.announced) {
            spies.push_back(std::make_unique<QSignalSpy>(m_dashboard.get(), signal));
        }
        row.change(*m_model);
        for (const auto &spy : spies) {
            EXPECT_GE(spy->size(), 1) << spy->signal().constData() << ", row " << &row - rows;
        }
    }
    EXPECT_TRUE(m_dashboard->expanded() && m_dashboard->pinnable() && !m_dashboard->pinned());
    EXPECT_TRUE(m_dashboard->updateOffered());
}

} // namespace
