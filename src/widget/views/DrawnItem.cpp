#include "widget/views/DrawnItem.h"

#include <memory>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

DrawnItem::DrawnItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setSmooth(false);
    connect(this, &QQuickItem::smoothChanged, this, &QQuickItem::update);
}

QSGNode *DrawnItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData * /*data*/)
{
    std::unique_ptr<QSGNode> old(node);
    const double scale = window()->effectiveDevicePixelRatio();
    const QSize pixels(qCeil(width() * scale), qCeil(height() * scale));
    if (pixels.isEmpty()) {
        return nullptr;
    }
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    painter.end();

    std::unique_ptr<QSGImageNode> drawn(
        old ? static_cast<QSGImageNode *>(old.release()) : window()->createImageNode());
    drawn->setFiltering(smooth() ? QSGTexture::Linear : QSGTexture::Nearest);
    drawn->setOwnsTexture(true);
    drawn->setTexture(window()->createTextureFromImage(image));
    drawn->setSourceRect(image.rect());
    drawn->setRect(QRectF(QPointF(), QSizeF(pixels) / scale));
    return drawn.release();
}

void DrawnItem::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) {
        update();
    }
}

void DrawnItem::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickItem::itemChange(change, value);
    if (change == ItemDevicePixelRatioHasChanged) {
        update();
    }
}

#include "moc_DrawnItem.cpp"
