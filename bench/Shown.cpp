#include "Shown.h"

#include "fail.h"
#include <ctime>
#include <QDir>
#include <QFile>

namespace {

constexpr int patience = 30'000; // milliseconds

double now(clockid_t clock)
{
    timespec time {};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The figure beside a name in one of the system's tables, such as "Rss:  36124 kB".
qint64 figure(const QString &path, const QByteArray &name)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QStringLiteral("cannot read ") % path);
    }
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name)) {
            return line.mid(name.size()).simplified().split(' ').constFirst().toLongLong();
        }
    }
    fail(path % QStringLiteral(" does not tell ") % QString::fromLatin1(name));
}

QProcessEnvironment environment(Shown::Frames frames)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM")); // a matter of this program alone
    if (frames == Shown::Frames::Heard) {
        environment.insert(QStringLiteral("QT_LOGGING_RULES"),
            QStringLiteral("qt.scenegraph.time.renderloop=true"));
        environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    }
    return environment;
}

} // namespace

Shown::Shown(const QStringList &command, Frames frames)
{
    m_process.setProcessEnvironment(environment(frames));
    if (frames == Frames::Unheard) {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }
    m_process.setReadChannel(QProcess::StandardError);
    m_start = now(CLOCK_MONOTONIC);
    m_process.start(command.constFirst(), command.mid(1));
    if (!m_process.waitForStarted(patience)) {
        fail(QStringLiteral("cannot start ") % command.constFirst());
    }
}

Shown::~Shown()
{
    m_process.terminate();
    m_process.waitForFinished(patience);
}

Shown::Times Shown::firstFrame()
{
    // The last words of what Qt says of a frame.
    QByteArray said;
    while (!(said += m_process.readAllStandardError()).contains("frameDelta")) {
        if (!m_process.waitForReadyRead(patience)) {
            fail(m_process.program() % QStringLiteral(" has drawn no frame"));
        }
    }
    const double wall = now(CLOCK_MONOTONIC) - m_start;
    clockid_t clock = 0;
    if (clock_getcpuclockid(static_cast<pid_t>(m_process.processId()), &clock) != 0) {
        fail(QStringLiteral("the system does not tell the processor time of another program"));
    }
    return {wall, now(clock)};
}

Shown::Memory Shown::memory() const
{
    constexpr double kilobytesInMega = 1e3;
    constexpr double kilobyte = 1.024; // what the system calls one
    const QString table = QStringLiteral("/proc/%1/smaps_rollup").arg(m_process.processId());
    const auto megabytes = [&table](const char *name) {
        return static_cast<double>(figure(table, name)) * kilobyte / kilobytesInMega;
    };
    return {megabytes("Rss:"), megabytes("Pss:")};
}

/// How often each thread has gone to sleep, which it does once for each time that it wakes up.
QHash<QString, qint64> Shown::sleeps() const
{
    const QDir threads(QStringLiteral("/proc/%1/task").arg(m_process.processId()));
    QHash<QString, qint64> counts;
    for (const QString &thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        counts.insert(thread,
            figure(
                threads.filePath(thread % QStringLiteral("/status")), "voluntary_ctxt_switches:"));
    }
    return counts;
}

qint64 Shown::wakeUps(std::chrono::milliseconds length)
{
    const QHash<QString, qint64> before = sleeps();
    rest(length);
    const QHash<QString, qint64> after = sleeps();
    qint64 count = 0;
    for (auto thread = after.begin(); thread != after.end(); ++thread) {
        count += thread.value() - before.value(thread.key());
    }
    for (auto thread = before.begin(); thread != before.end(); ++thread) {
        count += after.contains(thread.key()) ? 0 : 1; // it woke up to end
    }
    return count;
}

void Shown::rest(std::chrono::milliseconds length)
{
    if (m_process.waitForFinished(static_cast<int>(length.count()))) {
        fail(m_process.program() % QStringLiteral(" has ended by itself"));
    }
}
