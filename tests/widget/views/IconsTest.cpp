#include "widget/views/drawIcon.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QImage>
#include <QPainter>

namespace {

TEST(Icons, areDrawnInTheColourAskedFor)
{
    const QStringList files = QDir(u":/qt/qml/Kestrelbay/icons"_qs).entryList();
    ASSERT_GT(files.size(), 20);
    const QColor color(200, 40, 10, 128);
    for (const QString &file : files) {
        QImage image(40, 40, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        drawIcon(painter, file.chopped(4), QRectF(2.5, 3, 31, 31.5), color);
        painter.end();
        int full = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                full += pixel.alpha() >= 120 && std::abs(pixel.red() - 200) < 4 ? 1 : 0;
                EXPECT_LE(pixel.alpha(), 130) << file.toStdString();
            }
        }
        EXPECT_GT(full, 20) << file.toStdString();
        EXPECT_LT(full, 600) << file.toStdString(); // lines, no blot
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    }
}

} // namespace
