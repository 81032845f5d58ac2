#include "fail.h"
#include "ownProgram.h"
#include "Row.h"
#include "Shown.h"
#include "TenYears.h"
#include <algorithm>
#include <array>
#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

using namespace std::chrono_literals;

namespace {

constexpr auto toComeToRest = 8s;
constexpr auto minute = 60s;
constexpr double ticksAMinute = 30;

Row wakeUpRow(const char *name, TenYears::Panel panel)
{
    const TenYears::Home home(panel);
    Shown widget({ownProgram("kestrelbay")});
    widget.rest(toComeToRest);
    const auto count = static_cast<double>(widget.wakeUps(minute));
    // The limits are drawn anew twice a minute, and the display answers.
    constexpr double beside = 5;
    return {QLatin1String(name), count, ticksAMinute + beside, QString(),
        QStringLiteral("of %1 ticks").arg(ticksAMinute)};
}

/// Whether a system call, told in a line of strace's, changes anything in the file system.
bool changesFiles(const QByteArray &call)
{
    constexpr std::array always {"rename", "unlink", "mkdir", "rmdir", "link", "symlink",
        "truncate", "ftruncate", "fsync", "fdatasync", "chmod", "fchmod", "utimensat", "pwrite",
        "fallocate"};
    constexpr std::array modes {"O_WRONLY", "O_RDWR", "O_CREAT"};
    return std::ranges::any_of(always, [&call](const char *name) { return call.startsWith(name); })
        || (call.startsWith("open") && std::ranges::any_of(modes, [&call](const char *mode) {
               return call.contains(mode);
           }));
}

struct Calls {
    double all = 0;
    double toFiles = 0; ///< that change any
};

/// Counts what strace has written down between two moments, in seconds since 1970.
Calls counted(const QString &record, double from, double to)
{
    QFile file(record);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QStringLiteral("strace has left no record"));
    }
    Calls calls;
    for (const QByteArray &line : file.readAll().split('\n')) {
        // "4711 1795304856.647659 poll([{fd=7, ...", the process in front.
        const QList<QByteArray> words = line.simplified().split(' ');
        const double moment = words.value(1).toDouble();
        if (moment >= from && moment < to && !words.value(2).startsWith("<...")) {
            calls.all += 1;
            calls.toFiles += changesFiles(words.value(2) + line) ? 1 : 0;
        }
    }
    return calls;
}

QList<Row> callRows()
{
    const TenYears::Home home(TenYears::Panel::Shown);
    const QTemporaryDir scratch;
    const QString record = scratch.filePath(QStringLiteral("calls"));
    const auto seconds = [] {
        return static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1e3;
    };
    double from = 0;
    double to = 0;
    {
        // Strace stands aside, so that what is started is the widget itself.
        Shown widget({QStringLiteral("strace"), QStringLiteral("-D"), QStringLiteral("-f"),
            QStringLiteral("-ttt"), QStringLiteral("-o"), record, ownProgram("kestrelbay")});
        widget.rest(toComeToRest);
        from = seconds();
        widget.rest(minute);
        to = seconds();
    }
    const Calls calls = counted(record, from, to);
    constexpr double handful = 12;
    // None at all would mean that nothing was seen.
    const double perTick =
        calls.all > 0 ? calls.all / ticksAMinute : std::numeric_limits<double>::infinity();
    return {{QStringLiteral("idle: system calls for a tick"), perTick, handful, QString(),
                QStringLiteral("in a minute, drawing twice")},
        {QStringLiteral("idle: changes to files"), calls.toFiles, 0, QString(),
            QStringLiteral("in a minute")}};
}

} // namespace

QList<Row> idleRows()
{
    return QList<Row> {wakeUpRow("idle, shown: wake-ups a minute", TenYears::Panel::Shown),
               wakeUpRow("idle, hidden: wake-ups a minute", TenYears::Panel::Hidden)}
    + callRows();
}
