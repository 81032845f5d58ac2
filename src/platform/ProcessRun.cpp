#include "platform/ProcessRun.h"

#include <csignal>
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
    end(*m_process);
}

void ProcessRun::begin(const Options &options)
{
    m_process->setStandardErrorFile(QProcess::nullDevice());
    connect(m_process.get(), &QProcess::finished, this, [this] {
        finish(ProcessResult {m_process->exitCode(), m_process->readAllStandardOutput()});
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
        QTimer::singleShot(*options.patience, m_process.get(), [this] { kill(*m_process); });
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
