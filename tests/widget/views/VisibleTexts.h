#pragma once

#include <QQuickItem>
#include <QStringList>

/// The texts that a person sees in a scene, in drawing order.
[[nodiscard]] inline QStringList visibleTexts(const QQuickItem &root)
{
    QStringList texts;
    if (root.isVisible() && root.opacity() > 0) {
        if (root.inherits("QQuickText")) {
            texts << root.property("text").toString();
        }
        for (const QQuickItem *child : root.childItems()) {
            texts << visibleTexts(*child);
        }
    }
    return texts;
}
