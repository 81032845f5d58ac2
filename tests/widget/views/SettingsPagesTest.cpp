#include "FakeClock.h"
#include "widget/model/WidgetModel.h"
#include "widget/scripts/SyncSettings.h"
#include "widget/views/settings/DataPage.h"
#include "widget/views/settings/GeneralPage.h"
#include <gtest/gtest.h>
#include <QtTest/QAbstractItemModelTester>

namespace {

using namespace std::chrono_literals;
using Reporting = QAbstractItemModelTester::FailureReportingMode;

class SettingsPages : public testing::Test {
protected:
    [[nodiscard]] QString detail(int row)
    {
        return m_page.devices()->index(row).data(LinkedDevices::Detail).toString();
    }
    [[nodiscard]] QString title(int row)
    {
        return m_page.devices()->index(row).data(LinkedDevices::Title).toString();
    }

    FakeClock m_clock {TimePoint(1'772'708'400'000ms)}; // 2026-03-05, 12:00 in Berlin
    WidgetModel m_model {m_clock, [] { return QStringList(); }};
    SyncSettings m_sync {m_model};
    DataPage m_page {m_model, m_sync};
};

TEST_F(SettingsPages, tellOfEachLinkedDeviceWhatIsKnown)
{
    m_sync.apply({.links = QList<SyncLink> {
                      {u"A"_qs, u" lap\ntop "_qs, u"linux"_qs, false, u"2026-03-05T08:30:00Z"_qs},
                      {u"B"_qs, u" "_qs, u"plan\n9"_qs, {}, u"lately"_qs},
                      {.id = u"A"_qs},
                  }});
    m_model.loadStats(
        {.stats = {.devices = QList<DeviceRow> {{.id = u"A"_qs, .cost = 128.4}}}, .sessions = {}});
    EXPECT_EQ(title(0), u"lap top"_qs);
    EXPECT_EQ(detail(0), u"Linux · seen today 09:30 · $128"_qs);
    EXPECT_FALSE(m_page.devices()->index(0).data(LinkedDevices::Included).toBool());
    EXPECT_EQ(title(1), u"B"_qs);
    EXPECT_EQ(detail(1), u"plan 9 · seen lately"_qs);
    EXPECT_TRUE(m_page.devices()->index(1).data(LinkedDevices::Included).toBool());
    EXPECT_EQ(title(2), u"A"_qs);
}

TEST_F(SettingsPages, keepRowsWhoseTextsAloneChange)
{
    SyncStatus status {.links = QList<SyncLink> {{.id = u"A"_qs}, {.id = u"B"_qs}}};
    m_sync.apply(status);
    QAbstractItemModelTester tester(m_page.devices(), Reporting::Fatal);
    const QPersistentModelIndex kept = m_page.devices()->index(1);
    for (const char *ids : {"AB", "B", "XB", "XBYZ", "XBZ"}) {
        status.links->clear();
        for (const char id : std::string_view(ids)) {
            *status.links << SyncLink {.id = QChar::fromLatin1(id)};
        }
        m_sync.apply(status);
        QString titles;
        for (int row = 0; row < m_page.devices()->rowCount(); ++row) {
            titles += title(row);
        }
        EXPECT_EQ(titles, QLatin1String(ids));
        EXPECT_EQ(kept.data(LinkedDevices::Title), u"B"_qs) << ids;
    }
}

TEST_F(SettingsPages, sayWhenTheLastSyncWas)
{
    const auto note = [this](const SyncStatus &status) {
        m_sync.apply(status);
        return m_page.syncNote();
    };
    EXPECT_EQ(note({}), u"Not synced yet"_qs);
    EXPECT_EQ(note({.lastSync = u"2026-03-04T08:30:00Z"_qs}), u"Synced yesterday 09:30"_qs);
    EXPECT_EQ(note({.lastSync = u"once"_qs}), u"Synced once"_qs);
    EXPECT_EQ(note({.lastSync = u" "_qs}), u"Not synced yet"_qs);
    EXPECT_EQ(
        note({.enabled = false, .lastSync = u"once"_qs}), u"Nothing leaves this computer."_qs);
}

TEST_F(SettingsPages, askForALanguageByItsPlaceInTheList)
{
    GeneralSettings settings {nullptr};
    GeneralPage page(m_model, settings);
    QStringList asked;
    QObject::connect(&settings, &GeneralSettings::languageRequested,
        [&asked](const QString &code) { asked << code; });
    const qsizetype languages = m_model.languages().size();
    EXPECT_EQ(page.languageNames().size(), languages + 1);
    EXPECT_EQ(page.language(), 0);
    page.selectLanguage(0);
    page.selectLanguage(static_cast<int>(languages));
    EXPECT_EQ(asked, QStringList({QString(), m_model.languages().value(languages - 1)}));
}

} // namespace
