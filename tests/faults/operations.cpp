// fault_operations NAME [ARGUMENT]: one operation of the widget's, on the home of the current user,
// for tests that disturb it. What starts a program is done twice, and each time told in a line.

#include "widget/app/StateFile.h"
#include "widget/core/Paths.h"
#include "widget/core/WidgetLog.h"
#include "widget/model/WidgetModel.h"
#include "widget/platform/LoginItem.h"
#include "widget/scripts/CodexHook.h"
#include "widget/scripts/Indexer.h"
#include "widget/scripts/Node.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <QCoreApplication>
#include <sqlite3.h>

namespace {

template <typename Condition> void waitUntil(Condition holds)
{
    while (!holds()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

int save(const QString &version)
{
    StateFile().saveState({.latestVersion = version});
    return 0;
}

int log(const QString &message)
{
    WidgetLog::write(message);
    return 0;
}

int setAutostart(const QString &program)
{
    const LoginItem item(Paths::launchAgent(), program);
    item.setAutostart(true);
    std::puts(item.isOn() ? "on" : "off");
    return 0;
}

int runScript(const QString &script)
{
    for (int i = 0; i < 2; ++i) {
        const auto future =
            Node::run({script}, QStringLiteral("text"), QCoreApplication::instance());
        waitUntil([&future] { return future.isFinished(); });
        const Node::Result result = future.result();
        std::printf("%d %s\n", result.status, result.output.constData());
    }
    return 0;
}

int index(const QString & /*unused*/)
{
    const SystemClock clock;
    WidgetModel model(clock, [] { return QStringList(); });
    Indexer indexer(model, clock);
    for (int i = 0; i < 2; ++i) {
        int status = Node::notFound;
        const auto connection = QObject::connect(
            &indexer, &Indexer::finished, &model, [&status](int ended) { status = ended; });
        indexer.startIndexer();
        waitUntil([&indexer] { return !indexer.running(); });
        QObject::disconnect(connection);
        std::printf("%d\n", status);
    }
    return 0;
}

int applyHook(const QString & /*unused*/)
{
    CodexHook hook;
    for (const bool on : {true, false}) {
        hook.applyCodexHook(on);
        waitUntil([&hook] { return hook.children().isEmpty(); });
    }
    return 0;
}

/// Prints what SQLite thinks of a database.
int checkDatabase(const QString &file)
{
    sqlite3 *database = nullptr;
    const auto print = [](void *, int, char **row, char **) {
        return std::puts(row[0]) < 0 ? 1 : 0;
    };
    const bool isDone = sqlite3_open(file.toUtf8().constData(), &database) == SQLITE_OK
        && sqlite3_exec(database, "PRAGMA integrity_check", print, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(database);
    return isDone ? 0 : 1;
}

struct Operation {
    const char *name;
    int (*run)(const QString &argument);
};

constexpr std::array operations {Operation {"save", save}, Operation {"log", log},
    Operation {"autostart", setAutostart}, Operation {"run", runScript}, Operation {"index", index},
    Operation {"hook", applyHook}, Operation {"sound", checkDatabase}};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const auto *const found = std::ranges::find_if(operations,
        [&words](const Operation &each) { return words.value(1) == QLatin1String(each.name); });
    if (found == operations.end()) {
        std::fputs("usage: fault_operations NAME [ARGUMENT]\n", stderr);
        return 2;
    }
    const int status = found->run(words.value(2));
    WidgetLog::flush();
    return status;
}
