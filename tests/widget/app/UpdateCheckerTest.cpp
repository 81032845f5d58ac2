#include "widget/app/UpdateChecker.h"

#include "FakeClock.h"
#include "TestFiles.h"
#include "widget/app/Promised.h"
#include "widget/core/Paths.h"
#include "widget/core/WidgetLog.h"
#include "widget/model/WidgetModel.h"
#include "widget/sources/AppVersion.h"
#include <QSignalSpy>

namespace {

using namespace std::chrono_literals;
using namespace UpdateCheck;
using enum UpdateChecker::Occasion;

class Updates : public testing::Test {
protected:
    bool checks(UpdateChecker::Occasion occasion)
    {
        const std::size_t before = m_site.asked();
        m_updates.checkForUpdates(occasion);
        return m_site.asked() > before;
    }

    FakeClock m_clock {TimePoint(1'772'708'400'000ms)};
    WidgetModel m_model {m_clock, [] { return QStringList(); }};
    Promised<UpdateOutcome> m_site;
    UpdateChecker m_updates {
        m_model, m_clock, [this](const QString &, QObject *) { return m_site.ask(); }};
};

TEST_F(Updates, areLookedForOnceADayAndTenMinutesApartOnRequest)
{
    const UpdateOutcome reply = UpdateReply {QStringLiteral("0.0.1"), {}};
    const struct {
        std::chrono::seconds passes;
        UpdateChecker::Occasion occasion;
        std::optional<UpdateOutcome> answer; ///< nothing where no check is to begin
    } rows[] = {
        {0s, EveryDay, Unavailable()},
        {599s, OnRequest, {}}, // a failure is not tried again for ten minutes
        {1s, EveryDay, reply}, {599s, OnRequest, {}}, {1s, EveryDay, {}}, {0s, OnRequest, reply},
        {86'399s, EveryDay, {}}, {1s, EveryDay, Malformed()},
        {-172'800s, EveryDay, reply}, // the clock was set back
    };
    for (const auto &row : rows) {
        m_clock.advance(row.passes);
        ASSERT_EQ(checks(row.occasion), row.answer.has_value()) << m_site.asked();
        if (row.answer) {
            m_clock.advance(48h);
            EXPECT_FALSE(checks(OnRequest)) << "an answer is awaited";
            m_clock.advance(-48h);
            m_site.answer(*row.answer);
        }
    }
    m_updates.setUpdateCheckOn(false);
    m_clock.advance(48h);
    EXPECT_FALSE(checks(OnRequest));
}

TEST_F(Updates, rememberAnEarlierRun)
{
    m_updates.restore(m_clock.now() - 2h, QStringLiteral("999.0"));
    EXPECT_EQ(m_model.update(), QStringLiteral("999.0"));
    EXPECT_FALSE(checks(EveryDay));
    EXPECT_TRUE(checks(OnRequest));
    m_updates.restore(m_clock.now(), AppVersion::current());
    EXPECT_FALSE(m_model.update()) << "this very version";
}

TEST_F(Updates, areOfferedWithTheirPageAndRubbishIsLoggedOnce)
{
    WidgetLog::flush();
    QFile::remove(Paths::log());
    QSignalSpy replied(&m_updates, &UpdateChecker::replied);
    const QString page = AppVersion::site() % u"999";
    ASSERT_TRUE(checks(EveryDay));
    m_site.answer(UpdateReply {QStringLiteral("999"), page});
    EXPECT_EQ(m_model.update(), QStringLiteral("999"));
    EXPECT_EQ(m_updates.page(), QUrl(page));
    EXPECT_EQ(m_updates.updateCheckedAt(), m_clock.now());
    for (int i = 0; i < 2; ++i) {
        m_clock.advance(48h);
        ASSERT_TRUE(checks(EveryDay));
        m_site.answer(Malformed());
    }
    EXPECT_EQ(replied.size(), 1);
    EXPECT_EQ(m_model.update(), QStringLiteral("999"));
    WidgetLog::flush();
    QFile log(Paths::log());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_EQ(log.readAll().count(" update check: malformed response\n"), 1);
}

} // namespace
