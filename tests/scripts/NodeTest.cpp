#include "scripts/Node.h"

#include "awaited.h"
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

/// The profile alone decides what is on the path, so that the computer's own node is not seen.
void writeProfile(const QByteArray &path)
{
    for (const char *profile : {".profile", ".zprofile"}) {
        writeFile(inHome(profile), "PATH=\"" + path + "\"\n");
    }
}

TEST(Node, isFoundAsInTheUsersTerminal)
{
    for (const char *folder : {"/usr/local/bin", "/opt/homebrew/bin"}) {
        if (QFile::exists(QLatin1String(folder) % u"/node")) {
            GTEST_SKIP() << "this computer has a node in " << folder;
        }
    }
    writeProfile("$HOME/tools");
    QDir(inHome("tools")).removeRecursively();
    EXPECT_EQ(statusOfRun(), 127);
    QObject owner;
    const auto without = Node::run({QStringLiteral("/a script.mjs")}, std::nullopt, &owner);
    EXPECT_EQ(awaited(without), Node::Result());

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

TEST(Node, runsAScriptToItsEnd)
{
    writeProfile("$HOME/tools:/usr/bin:/bin");
    // It interprets our scripts as shell, so that no test depends on a real one.
    writeProgram(inHome("tools/node"), "#!/bin/sh\nexec sh \"$@\"\n");
    const QByteArray megabytes(4'000'000, 'x');
    const struct {
        const char *script;
        std::optional<QString> input;
        Node::Result result;
    } rows[] = {
        {"cat; echo \"$1\"; exit 5", {}, {5, "a b\n"}},
        {"cat; echo lost >&2", QString::fromUtf8("Z\xC3\xBCrich\n"), {0, "Z\xC3\xBCrich\n"}},
        {"exit 127", QString::fromLatin1(megabytes), {127, {}}},
        {"cat", QString::fromLatin1(megabytes), {0, megabytes}},
    };
    QObject owner;
    const QString script = inHome("a script.mjs");
    for (const auto &row : rows) {
        writeFile(script, row.script);
        const auto ended = awaited(Node::run({script, QStringLiteral("a b")}, row.input, &owner));
        ASSERT_TRUE(ended) << row.script;
        EXPECT_EQ(ended->status, row.result.status) << row.script;
        EXPECT_TRUE(ended->output == row.result.output) << row.script;
    }
}

} // namespace
