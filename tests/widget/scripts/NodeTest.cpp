#include "widget/scripts/Node.h"

#include "awaited.h"
#include "widget/app/FakeNode.h"

namespace {

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
        writeFile(inHome(profile), "PATH=\"$HOME/tools\"\necho '{\"error\":1}'\n");
    }
    QDir(inHome("tools")).removeRecursively();
    QObject owner;
    const auto run = [&owner] {
        return awaited(Node::run({u"/a script.mjs"_qs, u"--flag"_qs}, std::nullopt, &owner));
    };
    EXPECT_EQ(run(), (Node::Result {127, {}}));
    // Each is preferred to those before it.
    for (const char *path :
        {".nvm/versions/node/v18.0.0/bin/node", ".nvm/versions/node/v20.1.0/bin/node",
            ".local/share/fnm/aliases/default/bin/node", ".volta/bin/node", "tools/node"}) {
        writeProgram(inHome(path), "#!/bin/sh\nprintf '[%s]' \"$0\" \"$@\"\n");
        const QString words = u"[%1][/a script.mjs][--flag]"_qs.arg(inHome(path));
        EXPECT_EQ(run(), (Node::Result {0, words.toUtf8()}));
    }
}

TEST(Node, runsAScriptToItsEnd)
{
    installIndexer({});
    const QByteArray megabytes(4'000'000, 'x');
    const std::tuple<const char *, std::optional<QString>, Node::Result> rows[] = {
        {"cat; echo \"$1\"; exit 5", {}, {5, "a b\n"}},
        {"cat; echo lost >&2", u"Zürich\n"_qs, {0, "Zürich\n"}},
        {"exit 127", QString::fromLatin1(megabytes), {127, {}}},
        {"cat", QString::fromLatin1(megabytes), {0, megabytes}}};
    QObject owner;
    const QString script = inHome("a script.mjs");
    for (const auto &[commands, input, result] : rows) {
        writeFile(script, commands);
        const auto ended = awaited(Node::run({script, u"a b"_qs}, input, &owner));
        EXPECT_TRUE(ended == result) << commands;
    }
}

} // namespace
