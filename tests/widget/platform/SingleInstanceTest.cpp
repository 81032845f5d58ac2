#include "widget/platform/SingleInstance.h"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <QProcess>
#include <QTemporaryDir>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class Single : public testing::Test {
protected:
    const QTemporaryDir m_folder;
    const QString m_file = m_folder.filePath(QStringLiteral("widget.lock"));
};

TEST_F(Single, holdsUntilItGoesWhateverItHasStarted)
{
    QProcess program;
    {
        const SingleInstance first(m_file);
        EXPECT_FALSE(first.anotherRuns());
        EXPECT_TRUE(SingleInstance(m_file).anotherRuns());
        EXPECT_TRUE(SingleInstance(m_file).anotherRuns()) << "a look does not take the hold away";
        program.start(QStringLiteral("cat"), QStringList());
        ASSERT_TRUE(program.waitForStarted());
    }
    EXPECT_FALSE(SingleInstance(m_file).anotherRuns());
    EXPECT_EQ(program.state(), QProcess::Running);
    program.closeWriteChannel();
    program.waitForFinished();
    EXPECT_FALSE(SingleInstance(m_folder.filePath(QStringLiteral("none/lock"))).anotherRuns());
}

TEST_F(Single, isOneAmongManyAndLeavesNothingBehindWhenItIsKilled)
{
    std::array<int, 2> gate {};
    std::array<int, 2> told {};
    ASSERT_EQ(::pipe2(gate.data(), O_CLOEXEC) + ::pipe2(told.data(), O_CLOEXEC), 0);
    std::array<pid_t, 20> copies {};
    char byte = 0;
    for (pid_t &copy : copies) {
        copy = ::fork();
        if (copy == 0) {
            ::close(gate[1]);
            while (::read(gate[0], &byte, 1) > 0) { }
            const SingleInstance instance(m_file);
            byte = instance.anotherRuns() ? 'n' : 'y';
            while (::write(told[1], &byte, 1) == 1) {
                ::pause(); // until it is killed
            }
        }
        ASSERT_GT(copy, 0);
    }
    ::close(gate[1]); // now, all at once
    int alone = 0;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        ASSERT_EQ(::read(told[0], &byte, 1), 1);
        alone += byte == 'y' ? 1 : 0;
    }
    EXPECT_EQ(alone, 1);
    EXPECT_TRUE(SingleInstance(m_file).anotherRuns());
    for (const pid_t copy : copies) {
        ::kill(copy, SIGKILL);
        EXPECT_EQ(::waitpid(copy, nullptr, 0), copy);
    }
    EXPECT_FALSE(SingleInstance(m_file).anotherRuns());
    for (const int end : {gate[0], told[0], told[1]}) {
        ::close(end);
    }
}

} // namespace
