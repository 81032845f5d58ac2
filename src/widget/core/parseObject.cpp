#include "widget/core/parseObject.h"

#include <QJsonDocument>

std::optional<QJsonObject> parseObject(const QByteArray &bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}
