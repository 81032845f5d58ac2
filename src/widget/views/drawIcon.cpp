#include "widget/views/drawIcon.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPicture>

void drawIcon(QPainter &painter, const QString &name, const QRectF &box, const QColor &color)
{
    constexpr double side = 24; // of every recording
    QFile file(QLatin1String(":/qt/qml/Kestrelbay/icons/") % name % QLatin1String(".pic"));
    QPicture recording;
    const bool loaded = file.open(QIODevice::ReadOnly) && recording.load(&file);
    Q_ASSERT_X(loaded, "drawIcon", qUtf8Printable(name));
    if (!loaded) {
        return;
    }
    const double scale = painter.deviceTransform().m11();
    QImage image((box.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter drawing(&image);
    drawing.setRenderHint(QPainter::Antialiasing);
    drawing.save();
    drawing.scale(image.width() / side, image.height() / side);
    drawing.drawPicture(0, 0, recording);
    drawing.restore();
    drawing.setCompositionMode(QPainter::CompositionMode_SourceIn);
    drawing.fillRect(image.rect(), color);
    drawing.end();
    painter.drawImage(box, image);
}
