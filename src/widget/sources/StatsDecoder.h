#pragma once

#include "widget/sources/Stats.h"
#include <QByteArray>
#include <variant>

/// Why bytes are no statistics file, in words that name the place.
struct StatsDecodeError {
    QString description;
};

/// Decodes the bytes of a statistics file (UTF-8, no byte-order mark). Every key may be absent but
/// a device's id, unknown keys are ignored; one value of a wrong type fails the whole file.
[[nodiscard]] std::variant<Stats, StatsDecodeError> decodeStats(const QByteArray &bytes);
