#pragma once

#include <QQuickItem>

/// An item that is drawn into one image: half the memory of a QQuickPaintedItem, whose texture and
/// canvas are two. It is drawn anew after `update()` and when its size changes. Unless it is to be
/// `smooth` it keeps its sharp edges also where it stands between two pixels.
class DrawnItem : public QQuickItem {
    Q_OBJECT

public:
    explicit DrawnItem(QQuickItem *parent = nullptr);

    /// Draws the item in its own coordinates.
    virtual void draw(QPainter &painter) const = 0;

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
};
