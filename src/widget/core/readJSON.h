#pragma once

#include <optional>
#include <QByteArray>
#include <QString>

/// The bytes of a whole file without a leading UTF-8 byte-order mark; nothing when it cannot be
/// read, is no regular file or is larger than `most` bytes. The contents are not looked at.
[[nodiscard]] std::optional<QByteArray> readJSON(const QString &path, qint64 most);
