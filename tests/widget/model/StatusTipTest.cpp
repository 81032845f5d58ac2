#include "widget/model/statusTip.h"

#include "ModelFixture.h"

namespace {

using StatusTip = ModelFixture;

TEST_F(StatusTip, namesTheProviderAndTheWindowsThatHaveAReading)
{
    EXPECT_EQ(statusTip(*m_model).toStdString(), "trayEmpty");
    m_model->setLimits(Limits {});
    EXPECT_EQ(statusTip(*m_model).toStdString(), "trayEmpty");
    m_model->setLimits(
        Limits {.fiveHour = Reading {.percent = 59.6}, .sevenDay = Reading {8.4, {}}});
    EXPECT_EQ(statusTip(*m_model).toStdString(), "Claude · 5 hours 60% · Week 8%");

    m_model->setProvider(Provider::Codex);
    EXPECT_EQ(statusTip(*m_model).toStdString(), "trayEmpty");
    m_model->setCodex(CodexLimits {
        .limits = {.sevenDay = Reading {.percent = 120}}, .secondaryLength = Seconds(108'000)});
    EXPECT_EQ(statusTip(*m_model).toStdString(), "Codex · 30h 120%");
}

} // namespace
