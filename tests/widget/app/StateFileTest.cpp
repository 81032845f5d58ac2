#include "widget/app/StateFile.h"

#include "TestFiles.h"
#include "widget/core/Paths.h"
#include "widget/core/WidgetLog.h"

namespace {

PersistedState everythingElse()
{
    return {
        .view = ViewMode::Window,
        .topmost = false,
        .hidden = true,
        .expanded = true,
        .animations = false,
        .updateCheck = false,
        .tab = HistoryTab::Months,
        .provider = Provider::Codex,
        .notch = true,
        .launchWithClaude = true,
        .launchWithCodex = true,
        .statusLine = true,
        .language = QStringLiteral("de"),
        .uiLanguage = QStringLiteral("de"),
        .windowSpot = WindowSpot {-120.5, 33},
        .updateCheckedAt = TimePoint(std::chrono::milliseconds(1'772'708'400'250)),
        .latestVersion = QStringLiteral("1.2"),
    };
}

class States : public testing::Test {
protected:
    void SetUp() override
    {
        WidgetLog::flush();
        QDir(Paths::dir()).removeRecursively();
    }

    static PersistedState loaded(const QByteArray &bytes)
    {
        writeFile(Paths::state(), bytes);
        return StateFile::loadState();
    }
};

TEST_F(States, comeBackWhole)
{
    EXPECT_EQ(StateFile::loadState(), PersistedState());
    for (const PersistedState &state : {everythingElse(), PersistedState()}) {
        StateFile().saveState(state);
        EXPECT_EQ(StateFile::loadState(), state);
    }
}

TEST_F(States, areWrittenUnderTheKeysThatOthersRead)
{
    StateFile().saveState(everythingElse());
    QFile file(Paths::state());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), R"({
    "animations": false,
    "expanded": true,
    "hidden": true,
    "language": "de",
    "latestVersion": "1.2",
    "launchWithClaude": true,
    "launchWithCodex": true,
    "left": -120.5,
    "notch": true,
    "provider": "codex",
    "statusLine": true,
    "tab": "months",
    "top": 33,
    "topmost": false,
    "uiLanguage": "de",
    "updateCheck": false,
    "updateCheckedAt": 1772708400.25,
    "view": "window"
}
)");
}

TEST_F(States, takeOnlyWhatMakesSense)
{
    for (const char *bytes : {"", "{", "[]", "\xEF\xBB\xBFnull", R"({"left":1})", R"({"top":2})",
             R"({"updateCheckedAt":-999999999999.9999})",
             R"({"tab":"years","view":5,"provider":"x","topmost":"no","hidden":1,"language":{},
                 "left":"1","top":2,"updateCheckedAt":1e300,"latestVersion":7,"unknown":[]})"}) {
        EXPECT_EQ(loaded(bytes), PersistedState()) << bytes;
    }
    writeEndless(Paths::state());
    EXPECT_EQ(StateFile::loadState(), PersistedState());
    EXPECT_FALSE(loaded("\xEF\xBB\xBF{\"topmost\":false,\"tab\":7}").topmost);
    EXPECT_EQ(QFileInfo(Paths::log()).size(), 0) << "a damaged file is nobody's news";
}

TEST_F(States, logAFailedSaveOnceAndKeepTheOldFile)
{
    // A folder in the file's place cannot be replaced, whoever tries.
    QDir().mkpath(Paths::state() % u"/inside");
    StateFile file;
    file.saveState(PersistedState());
    file.saveState(PersistedState());
    WidgetLog::flush();
    QFile log(Paths::log());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_EQ(log.readAll().count(" state.json not saved: "), 1);
    EXPECT_EQ(QDir(Paths::dir()).entryList(QDir::Files), QStringList {QStringLiteral("widget.log")})
        << "nothing half-written is left";
    QDir(Paths::state()).removeRecursively();
    file.saveState(everythingElse());
    EXPECT_EQ(StateFile::loadState(), everythingElse());
}

TEST_F(States, areSavedThroughALinkWhichStaysOne)
{
    const QString elsewhere = Paths::dir() % u"/elsewhere/real.json";
    writeFile(elsewhere, "{}");
    ASSERT_TRUE(QFile::link(elsewhere, Paths::state()));
    StateFile().saveState(everythingElse());
    EXPECT_EQ(QFileInfo(Paths::state()).symLinkTarget(), elsewhere);
    EXPECT_GT(QFileInfo(elsewhere).size(), 100);
    EXPECT_EQ(StateFile::loadState(), everythingElse());
}

} // namespace
