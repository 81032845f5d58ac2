#pragma once

#include <algorithm>
#include <QQuickItem>

/// Whether something is between being shown and not.
inline bool isFading(const QQuickItem &item)
{
    const QVariant reveal = item.property("reveal");
    const bool here =
        reveal.isValid() && reveal.toReal() != (item.property("shown").toBool() ? 1 : 0);
    const QList<QQuickItem *> children = item.childItems();
    return here || std::ranges::any_of(children, [](const QQuickItem *c) { return isFading(*c); });
}
