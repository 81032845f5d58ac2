#pragma once

#include <memory>
#include <QProcess>
#include <QStringList>

/// Starts companion scripts with the `node` that the user's own terminal would find.
namespace Node {

/// A process, not yet started, that runs `node` with the arguments; the first is the script's path.
///
/// A login shell loads the user's profile, so a node found there wins; the usual places of package
/// managers and version managers come after it, the newest nvm version first. Without any node the
/// process exits with status 127. Standard streams are the caller's to set.
[[nodiscard]] std::unique_ptr<QProcess> process(const QStringList &arguments);

} // namespace Node
