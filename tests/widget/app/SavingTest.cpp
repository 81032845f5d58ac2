#include "widget/app/Saving.h"

#include "TestFiles.h"
#include "widget/app/StateFile.h"
#include "widget/core/parseObject.h"
#include "widget/core/Paths.h"
#include "widget/core/readJSON.h"
#include <QCoreApplication>
#include <QProcess>
#include <QThread>
#include <random>

namespace {

/// A state that takes some writing, all of one letter.
PersistedState lettered(QChar letter)
{
    PersistedState state;
    state.language = QString(200'000, letter);
    state.uiLanguage = state.language;
    return state;
}

TEST(Saving, leavesAWholeFileWheneverItIsKilled)
{
    StateFile().saveState(lettered(u'a'));
    std::minstd_rand random(1);
    std::uniform_int_distribution<int> wait(0, 20'000);
    for (int kills = 0; kills < 100; ++kills) {
        QProcess saver;
        saver.start(QCoreApplication::applicationFilePath(), {QLatin1String(saveForEver)});
        ASSERT_TRUE(saver.waitForReadyRead(20'000)) << "it has saved once";
        QThread::usleep(static_cast<unsigned long>(wait(random)));
        saver.kill();
        ASSERT_TRUE(saver.waitForFinished(20'000));
        const auto bytes = readJSON(Paths::state(), 1'000'000);
        ASSERT_TRUE(bytes && parseObject(*bytes)) << kills;
        const PersistedState state = StateFile::loadState();
        EXPECT_TRUE(state == lettered(u'a') || state == lettered(u'b')) << kills;
    }
}

} // namespace

void saveUntilKilled()
{
    StateFile file;
    file.saveState(lettered(u'b'));
    puts("saved");
    fflush(stdout);
    for (;;) {
        file.saveState(lettered(u'a'));
        file.saveState(lettered(u'b'));
    }
}
