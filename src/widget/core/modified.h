#pragma once

#include "formats/TimePoint.h"
#include <optional>
#include <QString>

/// When the file was last modified, as the file system reports it; nothing when it does not exist
/// or its attributes cannot be read. Files are recognised as changed by this alone.
[[nodiscard]] std::optional<TimePoint> modified(const QString &path);
