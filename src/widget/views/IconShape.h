#pragma once

#include "widget/views/DrawnItem.h"
#include <QColor>

/// Draws an icon in one colour, as large as the item.
class IconShape : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)

public:
    explicit IconShape(QQuickItem *parent = nullptr);

    void draw(QPainter &painter) const override;

Q_SIGNALS:
    void changed();

private:
    QString m_name; ///< such as "refresh-cw"
    QColor m_color;
};
