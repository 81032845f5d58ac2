#include "widget/scripts/SideFiles.h"

#include "widget/scripts/DataFolder.h"

namespace {

class Sides : public DataFolder {
protected:
    static qsizetype failuresLogged()
    {
        return logged().count(" usage-limits.json: cannot read or parse\n");
    }

    double shownPercent() const
    {
        const std::optional<Limits> &limits = m_model.limits();
        return limits && limits->fiveHour ? limits->fiveHour->percent : -1;
    }

    SideFiles m_sides {m_model};
};

TEST_F(Sides, takeEachGoodVersionOfTheLimitsOnceAndLogABadOneOnce)
{
    EXPECT_FALSE(m_sides.readLimits());
    writeVersion(Paths::limits(), "\xEF\xBB\xBF{\"fiveHour\":{\"percent\":40}}", 100);
    EXPECT_TRUE(m_sides.readLimits());
    EXPECT_FALSE(m_sides.readLimits());
    m_sides.forgetLimits();
    EXPECT_TRUE(m_sides.readLimits());
    for (const int stamp : {200, 300}) {
        writeVersion(Paths::limits(), "[]", stamp);
        EXPECT_FALSE(m_sides.readLimits() || m_sides.readLimits());
    }
    EXPECT_EQ(shownPercent(), 40);
    EXPECT_EQ(failuresLogged(), 2);

    // The same version is read again until it makes sense.
    writeVersion(Paths::limits(), R"({"fiveHour":{"percent":50}})", 300);
    EXPECT_TRUE(m_sides.readLimits());
    QFile::remove(Paths::limits());
    EXPECT_FALSE(m_sides.readLimits());
    EXPECT_EQ(shownPercent(), 50);
    EXPECT_EQ(failuresLogged(), 2);
}

TEST_F(Sides, mergeTheAccountsReadingsWithTheFiles)
{
    m_sides.setAccountLimits(Limits {.fiveHour = Reading {70, {}}});
    EXPECT_EQ(shownPercent(), 70);
    writeVersion(Paths::limits(), R"({"fiveHour":{"percent":40},"sevenDay":{"percent":5}})", 100);
    m_sides.readLimits();
    EXPECT_EQ(shownPercent(), 70);
    EXPECT_TRUE(m_model.limits()->sevenDay);
    EXPECT_EQ(m_sides.fileLimits()->fiveHour->percent, 40);
}

TEST_F(Sides, takeCodexLimitsAndDropWhatIsBadOrGone)
{
    EXPECT_FALSE(m_sides.readSideFiles());
    writeVersion(Paths::codexLimits(), R"({"primary":{"percent":9}})", 100);
    EXPECT_TRUE(m_sides.readSideFiles());
    EXPECT_TRUE(m_model.codex());
    EXPECT_FALSE(m_sides.readSideFiles());
    writeVersion(Paths::codexLimits(), "{", 200);
    EXPECT_TRUE(m_sides.readSideFiles());
    EXPECT_FALSE(m_model.codex());
    EXPECT_FALSE(m_sides.readSideFiles());
    QFile::remove(Paths::codexLimits());
    EXPECT_TRUE(m_sides.readSideFiles());
    EXPECT_EQ(failuresLogged(), 0);
}

} // namespace
