#pragma once

#include <optional>
#include <QByteArray>
#include <QJsonObject>

/// The one object that a JSON text is; nothing when it is malformed or something else.
[[nodiscard]] std::optional<QJsonObject> parseObject(const QByteArray &bytes);
