#pragma once

#include <optional>
#include <QByteArray>
#include <QString>

/// Replaces a file's content in one step: whatever happens, the file is the old or the new one,
/// whole and with the permissions that it had. Says what went wrong, if anything, in the system's
/// words.
[[nodiscard]] std::optional<QString> replaceFile(const QString &path, const QByteArray &bytes);
