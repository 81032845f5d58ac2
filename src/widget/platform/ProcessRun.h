#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <QFile>
#include <QFuture>
#include <QProcess>
#include <QPromise>

/// How a program that was run to its end has ended.
struct ProcessResult {
    int status = 0;    ///< exit status, or the signal that ended it
    QByteArray output; ///< all of its standard output

    bool operator==(const ProcessResult &) const = default;
};

/// Runs one program to its end without waiting for it. Standard error is discarded; the standard
/// input is what is given, then its end.
///
/// It belongs to its parent and deletes itself at the end. When patience ends, so does the program;
/// when the parent goes first, the options say what becomes of it.
class ProcessRun final : public QObject {
    Q_OBJECT

public:
    struct Options {
        QByteArray input;
        std::optional<std::chrono::milliseconds> patience; ///< nothing waits for ever
        /// The program goes on alone when the parent goes, as one that must not stop half-way. Its
        /// output is kept in a file without a name then, so that it can always be written.
        bool outlivesParent = false;
    };

    /// Starts a process that is prepared up to its streams. The future holds nothing when it cannot
    /// be started.
    [[nodiscard]] static QFuture<std::optional<ProcessResult>> start(
        std::unique_ptr<QProcess> process, const Options &options, QObject *parent);

    /// Has a process that is not yet started lead a group, to which all belongs that it starts.
    static void leadGroup(QProcess &process);
    /// Ends a process, and its group where it leads one, at once and without waiting for it.
    static void kill(const QProcess &process);
    /// Ends a process, and its group where it leads one: asks first, and waits a moment for it. For
    /// the end of the program, when nothing else waits for this thread.
    static void end(QProcess &process);

    ~ProcessRun() override;
    Q_DISABLE_COPY_MOVE(ProcessRun)

private:
    ProcessRun(std::unique_ptr<QProcess> process, QObject *parent);
    void begin(const Options &options);
    void keepOutput();
    [[nodiscard]] QByteArray output();
    [[nodiscard]] bool letGo();
    void finish(const std::optional<ProcessResult> &result);

    std::unique_ptr<QProcess> m_process;
    std::unique_ptr<QFile> m_output; ///< of a program that may outlive us
    QPromise<std::optional<ProcessResult>> m_promise;
};

/// Runs a program with arguments and gives what ProcessRun gives; replaced in tests.
using ProgramRunner = std::function<QFuture<std::optional<ProcessResult>>(
    const QString &program, const QStringList &arguments, QObject *owner)>;

/// The runner of real programs, which has half a minute of patience.
[[nodiscard]] ProgramRunner programRunner();
