#pragma once

#include <QQuickItem>
#include <QStringList>

/// The texts that a person sees in a scene, in drawing order.
[[nodiscard]] QStringList visibleTexts(const QQuickItem &root);

/// The first visible item whose accessible name this is, below root; null when there is none.
[[nodiscard]] QQuickItem *itemNamed(QQuickItem &root, const QString &accessibleName);
