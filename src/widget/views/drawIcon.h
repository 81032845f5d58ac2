#pragma once

class QColor;
class QPainter;
class QRectF;
class QString;

/// Draws an icon of ours, told by its name such as "refresh-cw", into a box and in one colour.
void drawIcon(QPainter &painter, const QString &name, const QRectF &box, const QColor &color);
