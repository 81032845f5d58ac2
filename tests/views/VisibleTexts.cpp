#include "views/VisibleTexts.h"

#include <QQmlProperty>

namespace {

template <typename Visit> void forEachVisible(const QQuickItem &item, Visit visit)
{
    if (!item.isVisible() || item.opacity() == 0) {
        return;
    }
    visit(item);
    for (const QQuickItem *child : item.childItems()) {
        forEachVisible(*child, visit);
    }
}

} // namespace

QStringList visibleTexts(const QQuickItem &root)
{
    QStringList texts;
    forEachVisible(root, [&texts](const QQuickItem &item) {
        const QString text = item.property("text").toString();
        if (item.inherits("QQuickText") && !text.isEmpty()) {
            texts << text;
        }
    });
    return texts;
}

QQuickItem *itemNamed(QQuickItem &root, const QString &accessibleName)
{
    QQuickItem *found = nullptr;
    forEachVisible(root, [&](const QQuickItem &item) {
        const QQmlProperty name(
            const_cast<QQuickItem *>(&item), QStringLiteral("Accessible.name"), qmlContext(&item));
        if (!found && name.isValid() && name.read().toString() == accessibleName) {
            found = const_cast<QQuickItem *>(&item);
        }
    });
    return found;
}
