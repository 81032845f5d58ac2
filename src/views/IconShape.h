#pragma once

#include "views/DrawnItem.h"
#include <QColor>
#include <QUrl>

/// Draws an icon of the module in one colour, as large as the item.
class IconShape : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY sourceChanged REQUIRED)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    using DrawnItem::DrawnItem;

    /// A drawing within the program, told from where the item is used; its colour is
    /// `currentColor`.
    [[nodiscard]] const QUrl &source() const { return m_source; }
    void setSource(const QUrl &source);
    [[nodiscard]] const QColor &color() const { return m_color; }
    void setColor(const QColor &color);

    void draw(QPainter &painter) const override;

Q_SIGNALS:
    void sourceChanged();
    void colorChanged();

private:
    QUrl m_source;
    QColor m_color;
};
