#include "model/WidgetModel.h"

#include "core/Paths.h"
#include "FakeClock.h"
#include "TestFiles.h"
#include "text/Strings.h"
#include <QSignalSpy>

namespace {

using namespace std::chrono;

class Model : public testing::Test {
protected:
    void SetUp() override
    {
        writeFile(Paths::i18n(), R"({
            "en":{"langName":"English","collecting":"Collecting","needNode":"Node is missing",
                  "today":"Today"},
            "de":{"langName":"Deutsch","collecting":"Wird gesammelt"}})");
        m_model = std::make_unique<WidgetModel>(m_clock, [this] { return m_system; });
    }

    static ParsedStats parsed()
    {
        ParsedStats made;
        made.stats.providers = QMap<QString, ProviderStats>();
        for (const char *provider : {"claude", "codex", "claude", "other"}) {
            SessionItem item;
            item.title = QLatin1String(provider);
            item.provider = QLatin1String(provider);
            made.sessions << item;
        }
        return made;
    }

    FakeClock m_clock {sys_days(2026y / 3 / 5) + 11h};
    QStringList m_system;
    std::unique_ptr<WidgetModel> m_model;
};

TEST_F(Model, startsInEnglishAndFollowsTheSystemWhenToldTo)
{
    EXPECT_EQ(m_model->langCode(), QLatin1String("en"));
    m_system = QStringList {QStringLiteral("de-CH")};
    m_model->setLanguage({});
    EXPECT_EQ(m_model->langCode(), QLatin1String("de"));
    EXPECT_EQ(m_model->note(), QLatin1String("Wird gesammelt"));
    EXPECT_EQ(m_model->t(QStringLiteral("today")), QLatin1String("Today"));
    EXPECT_EQ(m_model->languageName(QStringLiteral("de")), QLatin1String("Deutsch"));
    EXPECT_EQ(m_model->languageName(QStringLiteral("xx")), QLatin1String("xx"));

    // A language that is gone falls back without being forgotten.
    m_model->setLanguage(QStringLiteral("xx"));
    EXPECT_EQ(m_model->langCode(), QLatin1String("de"));
    EXPECT_EQ(m_model->langPref(), QLatin1String("xx"));
}

TEST_F(Model, notifiesOfEqualValuesToo)
{
    QSignalSpy provider(m_model.get(), &WidgetModel::providerChanged);
    QSignalSpy expanded(m_model.get(), &WidgetModel::expandedChanged);
    QSignalSpy noNode(m_model.get(), &WidgetModel::noNodeChanged);
    QSignalSpy now(m_model.get(), &WidgetModel::nowChanged);
    QSignalSpy strings(m_model.get(), &WidgetModel::stringsChanged);
    QSignalSpy stats(m_model.get(), &WidgetModel::statsChanged);
    for (int i = 0; i < 2; ++i) {
        m_model->setProvider(Provider::Claude);
        m_model->setExpanded(false);
        m_model->setNoNode(false);
        m_model->setNow(m_clock.now());
        m_model->setLanguage({});
        m_model->loadStats(parsed());
    }
    for (const QSignalSpy *spy : {&provider, &expanded, &noNode, &now, &strings, &stats}) {
        EXPECT_EQ(spy->size(), 2) << spy->signal().constData();
    }
}

TEST_F(Model, saysWhyThereIsNothingAndKeepsTheLastGoodData)
{
    EXPECT_EQ(m_model->note(), QLatin1String("Collecting"));
    m_model->setCollectFailed(true);
    EXPECT_TRUE(m_model->note().contains(QLatin1String("widget.log")));
    m_model->setCollectFailed(false);
    m_model->setUnreadable(true);
    EXPECT_TRUE(m_model->note().startsWith(QLatin1String("The statistics cannot be read")));
    m_model->setNoNode(true);
    EXPECT_EQ(m_model->note(), QLatin1String("Node is missing"));

    m_model->loadStats(parsed());
    EXPECT_TRUE(m_model->note().isEmpty());
    m_model->setUnreadable(true);
    EXPECT_TRUE(m_model->note().isEmpty());
    EXPECT_EQ(m_model->summary().size(), 6);
    EXPECT_EQ(m_model->sessionList()->rowCount(), 2);
}

TEST_F(Model, listsTheSessionsOfTheProvider)
{
    m_model->loadStats(parsed());
    EXPECT_EQ(m_model->sessionList()->rowCount(), 2);
    m_model->setProviderIndex(1);
    EXPECT_EQ(m_model->provider(), Provider::Codex);
    EXPECT_EQ(m_model->sessionList()->rowCount(), 1);
    EXPECT_EQ(m_model->providerIndex(), 1);
    EXPECT_EQ(m_model->sessions().size(), 4);
}

TEST_F(Model, relabelsSessionsAtMidnightOnly)
{
    m_model->loadStats(parsed());
    QSignalSpy relabelled(m_model->sessionList(), &QAbstractItemModel::dataChanged);
    m_clock.advance(11h + 59min);
    m_model->setNow(m_clock.now());
    EXPECT_EQ(relabelled.size(), 0);
    m_clock.advance(1min);
    m_model->setNow(m_clock.now());
    EXPECT_EQ(relabelled.size(), 1);
}

} // namespace
