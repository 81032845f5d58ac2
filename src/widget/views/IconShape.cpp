#include "widget/views/IconShape.h"

#include "widget/views/drawIcon.h"

IconShape::IconShape(QQuickItem *parent)
    : DrawnItem(parent)
{
    connect(this, &IconShape::changed, this, &QQuickItem::update);
}

void IconShape::draw(QPainter &painter) const
{
    drawIcon(painter, m_name, boundingRect(), m_color);
}

#include "moc_IconShape.cpp"
