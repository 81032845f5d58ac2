#include "widget/platform/ProcessRun.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <QTimer>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

void signalGroup(const QProcess &process, int signal)
{
    const auto leader = static_cast<pid_t>(process.processId());
    if (leader > 0 && ::kill(-leader, signal) != 0) {
        ::kill(leader, signal); // it leads none
    }
}

} // namespace

void ProcessRun::leadGroup(QProcess &process)
{
    process.setChildProcessModifier([] { ::setsid(); });
}

void ProcessRun::kill(const QProcess &process)
{
    signalGroup(process, SIGKILL);
}

void ProcessRun::end(QProcess &process)
{
    if (process.state() == QProcess::NotRunning) {
        return;
    }
    signalGroup(process, SIGTERM);
    if (!process.waitForFinished(1000)) {
        kill(process);
        process.waitForFinished(1000);
    }
}

QFuture<std::optional<ProcessResult>> ProcessRun::start(
    std::unique_ptr<QProcess> process, const Options &options, QObject *parent)
{
    auto *const run = new ProcessRun(std::move(process), parent);
    auto future = run->m_promise.future();
    run->m_promise.start();
    run->begin(options);
    return future;
}

ProcessRun::ProcessRun(std::unique_ptr<QProcess> process, QObject *parent)
    : QObject(parent)
    , m_process(std::move(process))
{
}

ProcessRun::~ProcessRun()
{
    m_process->disconnect(this);
    if (!m_output || !letGo()) {
        end(*m_process);
    }
}

/// Leaves the program alone with all of its input; false when it cannot have that.
bool ProcessRun::letGo()
{
    constexpr int longest = 1000; // milliseconds
    m_process->waitForStarted(longest);
    while (m_process->bytesToWrite() > 0 && m_process->waitForBytesWritten(longest)) { }
    if (m_process->bytesToWrite() > 0) {
        return false;
    }
    // A QProcess would end its program when it is deleted, so this one never is.
    static auto &kept = *new QList<QProcess *>;
    kept << m_process.release();
    return true;
}

/// Has the program write into a file that no name leads to: it goes with whoever uses it last.
void ProcessRun::keepOutput()
{
    std::FILE *const file = std::tmpfile();
    if (file == nullptr) {
        return; // it is ended with us, as it could not write into a pipe that nobody reads
    }
    m_output = std::make_unique<QFile>();
    static_cast<void>(
        m_output->open(file, QIODevice::ReadOnly | QIODevice::Unbuffered, QFile::AutoCloseHandle));
    ::fcntl(m_output->handle(), F_SETFD, FD_CLOEXEC);
    m_process->setStandardOutputFile(QProcess::nullDevice());
    m_process->setChildProcessModifier(
        [first = m_process->childProcessModifier(), handle = m_output->handle()] {
            if (first) {
                first();
            }
            ::dup2(handle, STDOUT_FILENO);
        });
}

QByteArray ProcessRun::output()
{
    if (!m_output) {
        return m_process->readAllStandardOutput();
    }
    m_output->seek(0);
    return m_output->readAll();
}

void ProcessRun::begin(const Options &options)
{
    m_process->setStandardErrorFile(QProcess::nullDevice());
    if (options.outlivesParent) {
        keepOutput();
    }
    connect(m_process.get(), &QProcess::finished, this, [this] {
        finish(ProcessResult {m_process->exitCode(), output()});
    });
    // Queued, so that a start that fails at once does not end the run while it begins. A program
    // that does not read its input is no failure.
    connect(
        m_process.get(), &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                finish(std::nullopt);
            }
        },
        Qt::QueuedConnection);
    m_process->start();
    m_process->write(options.input);
    m_process->closeWriteChannel();
    if (options.patience) {
        QTimer::singleShot(
            *options.patience, m_process.get(), [process = m_process.get()] { kill(*process); });
    }
}

void ProcessRun::finish(const std::optional<ProcessResult> &result)
{
    if (m_promise.future().isFinished()) {
        return; // Qt tells twice of a stream that could not be opened
    }
    m_promise.addResult(result);
    m_promise.finish();
    deleteLater();
}

ProgramRunner programRunner()
{
    return [](const QString &program, const QStringList &arguments, QObject *owner) {
        auto process = std::make_unique<QProcess>();
        process->setProgram(program);
        process->setArguments(arguments);
        return ProcessRun::start(std::move(process), {.patience = 30s}, owner);
    };
}

#include "moc_ProcessRun.cpp"
