#include "ModelFixture.h"

#include "widget/text/Strings.h"
#include <QSignalSpy>

namespace {

using namespace std::chrono;

class Model : public ModelFixture {
protected:
    [[nodiscard]] std::string newest() const
    {
        return m_model->series().bars.last().label.toStdString();
    }
};

TEST_F(Model, startsInEnglishAndFollowsTheSystemWhenToldTo)
{
    EXPECT_EQ(m_model->langCode(), u"en");
    m_system = QStringList {u"de-CH"_qs};
    m_model->setLanguage({});
    EXPECT_EQ(m_model->langCode(), u"de");
    EXPECT_EQ(m_model->note(), u"Wird gesammelt");
    EXPECT_EQ(m_model->languageName(u"de"_qs), u"Deutsch");
    // A language that is gone falls back without being forgotten.
    m_model->setLanguage(u"xx"_qs);
    EXPECT_EQ(m_model->langCode(), u"de");
    EXPECT_EQ(m_model->langPref(), u"xx");
}

TEST_F(Model, saysWhyThereIsNothingAndKeepsTheLastGoodData)
{
    EXPECT_EQ(m_model->note(), u"Collecting");
    m_model->setUnreadable(true);
    EXPECT_TRUE(m_model->note().startsWith(u"The statistics cannot be read"));
    m_model->setCollectFailed(true);
    EXPECT_TRUE(m_model->note().contains(u"widget.log"));
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
    // Steps, where they lead, and how often the page has been built by then.
    const std::tuple<qint64, qint64, int> rows[] = {
        {0, 0, 0}, {-1, 0, 0}, {2, 2, 1}, {5, 3, 2}, {1, 3, 2}, {-1, 2, 3}, {-9, 0, 4}};
    for (const auto &[steps, offset, rebuilds] : rows) {
        m_model->move(steps);
        EXPECT_EQ(m_model->offset(), offset) << steps;
        EXPECT_EQ(m_model->series().offset, offset) << steps;
        EXPECT_EQ(rebuilt.size(), rebuilds) << steps;
    }
}

TEST_F(Model, staysOnItsPageUntilTheTabIsChosen)
{
    m_model->loadStats(parsed(20));
    m_model->move(5);
    m_model->hover().setX(10);
    m_model->setLanguage(u"de"_qs);
    m_model->loadStats(parsed(19));
    EXPECT_EQ(m_model->offset(), 5);
    EXPECT_EQ(newest(), "28 Feb");
    m_model->loadStats(parsed(16)); // which leaves two bars off the page
    EXPECT_EQ(m_model->offset(), 2);
    EXPECT_EQ(m_model->hover().x(), 10);

    m_model->selectTab(HistoryTab::Days);
    EXPECT_EQ(m_model->offset(), 0);
    EXPECT_FALSE(m_model->hover().x());
    EXPECT_EQ(newest(), "5 Mar");
}

} // namespace
