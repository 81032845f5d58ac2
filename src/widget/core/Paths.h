#pragma once

#include <QString>

/// Every file location of the system; nothing else builds a path.
///
/// Each is absolute, computed once on first use and then kept, from any thread. None is created
/// here: whoever writes into `dir` makes it first (makeDataFolder).
namespace Paths {

/// The current user's home directory, from the user database and not from HOME.
[[nodiscard]] const QString &home();
/// The folder of Claude Code.
[[nodiscard]] const QString &claude();
/// Where Claude Code keeps its access token.
[[nodiscard]] const QString &credentials();
/// The folder of our own data.
[[nodiscard]] const QString &dir();
/// The folder of Codex: CODEX_HOME as it stands where it is set (even empty), else ~/.codex.
[[nodiscard]] const QString &codexHome();

/// Spending and token history, written by the indexer.
[[nodiscard]] const QString &stats();
/// Our own options and remembered values.
[[nodiscard]] const QString &state();
/// What the running copy holds, so that there is only one.
[[nodiscard]] const QString &lock();
/// The diagnostic log, for people.
[[nodiscard]] const QString &log();
/// The translation table, put there by the launcher.
[[nodiscard]] const QString &i18n();
/// The script that runs the indexer.
[[nodiscard]] const QString &indexer();
/// The script that syncs devices, and indexes too.
[[nodiscard]] const QString &sync();
/// What the sync script last reported.
[[nodiscard]] const QString &syncStatus();
/// Codex limits, written by the Codex hook.
[[nodiscard]] const QString &codexLimits();
/// The script that Codex calls as its hook.
[[nodiscard]] const QString &codexHook();
/// Claude limits, written by Claude Code's status line.
[[nodiscard]] const QString &limits();
/// The record that starts us at login: a launch agent on macOS, an autostart entry elsewhere.
[[nodiscard]] const QString &launchAgent();

} // namespace Paths
