#include "scripts/Node.h"

#include "core/Paths.h"
#include "TestFiles.h"

namespace {

/// A `node` that says where it was found by its exit status, or 99 when it got other arguments.
QByteArray fakeNode(int status)
{
    return "#!/bin/sh\n[ \"$*\" = '/a script.mjs --flag' ] && exit " + QByteArray::number(status)
        + "\nexit 99\n";
}

int statusOfRun()
{
    const auto process = Node::process({QStringLiteral("/a script.mjs"), QStringLiteral("--flag")});
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start();
    EXPECT_TRUE(process->waitForFinished(20'000));
    return process->exitCode();
}

QString inHome(const char *path)
{
    return QDir(Paths::home()).filePath(QLatin1String(path));
}

TEST(Node, isFoundAsInTheUsersTerminal)
{
    for (const char *folder : {"/usr/local/bin", "/opt/homebrew/bin"}) {
        if (QFile::exists(QLatin1String(folder) % u"/node")) {
            GTEST_SKIP() << "this computer has a node in " << folder;
        }
    }
    // The profile alone decides what is on the path, so that the computer's own node is not seen.
    for (const char *profile : {".profile", ".zprofile"}) {
        writeFile(inHome(profile), "PATH=\"$HOME/tools\"\n");
    }
    QDir(inHome("tools")).removeRecursively();
    EXPECT_EQ(statusOfRun(), 127);

    writeProgram(inHome(".nvm/versions/node/v18.0.0/bin/node"), fakeNode(18));
    EXPECT_EQ(statusOfRun(), 18);
    writeProgram(inHome(".nvm/versions/node/v20.1.0/bin/node"), fakeNode(20));
    EXPECT_EQ(statusOfRun(), 20);
    writeProgram(inHome(".local/share/fnm/aliases/default/bin/node"), fakeNode(21));
    EXPECT_EQ(statusOfRun(), 21);
    writeProgram(inHome(".volta/bin/node"), fakeNode(22));
    EXPECT_EQ(statusOfRun(), 22);
    writeProgram(inHome("tools/node"), fakeNode(23));
    EXPECT_EQ(statusOfRun(), 23);
}

} // namespace
