#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <QFuture>
#include <QProcess>
#include <QStringList>

/// Starts companion scripts with the `node` that the user's own terminal would find.
namespace Node {

/// The exit status that says that there is no node.
inline constexpr int notFound = 127;

/// How a script has ended.
struct Result {
    int status = notFound;
    QByteArray output; ///< all that the script wrote to standard output

    bool operator==(const Result &) const = default;
};

/// A process, not yet started, that runs `node` with the arguments; the first is the script's path.
///
/// A login shell loads the user's profile, so a node found there wins; the usual places of package
/// managers and version managers come after it, the newest nvm version first. Without any node the
/// process exits with status 127. Standard streams are the caller's to set; what the profile prints
/// comes in front of what the script does, see scriptOutput().
[[nodiscard]] std::unique_ptr<QProcess> process(const QStringList &arguments);

/// Of all that such a process wrote to standard output, what the script did.
[[nodiscard]] QByteArray scriptOutput(const QByteArray &all);

/// Runs a script to its end with this text (UTF-8) on its standard input, which then ends. What it
/// says on standard error is discarded. It ends early when patience does; when `owner` goes, it is
/// let go on.
[[nodiscard]] QFuture<Result> run(const QStringList &arguments, const std::optional<QString> &input,
    QObject *owner, std::optional<std::chrono::milliseconds> patience = {});

} // namespace Node
