#pragma once

#include <memory>
#include <QQmlEngine>
#include <QQuickItem>

/// Makes a view of the QML module, named by its path within it, with these values for its required
/// properties. A program that was built without it ends with a message.
[[nodiscard]] std::unique_ptr<QQuickItem> makeView(
    QQmlEngine &engine, const QString &path, const QVariantMap &properties);
