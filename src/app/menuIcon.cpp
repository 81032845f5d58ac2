#include "app/menuIcon.h"

#include <algorithm>
#include <array>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

namespace {

struct Drawing {
    QLatin1String symbol;
    QLatin1String file;
};

constexpr std::array drawings {
    Drawing {QLatin1String("arrow.down.circle"), QLatin1String("circle-arrow-down")},
    Drawing {QLatin1String("macwindow"), QLatin1String("app-window")},
    Drawing {QLatin1String("chart.bar"), QLatin1String("chart-column")},
    Drawing {QLatin1String("gearshape"), QLatin1String("settings")},
    Drawing {QLatin1String("rectangle.3.group"), QLatin1String("layout-template")},
    Drawing {QLatin1String("cursorarrow.click"), QLatin1String("mouse-pointer-click")},
    Drawing {QLatin1String("macwindow.on.rectangle"), QLatin1String("picture-in-picture-2")},
    Drawing {QLatin1String("rectangle.topthird.inset.filled"), QLatin1String("panel-top")},
    Drawing {QLatin1String("pin"), QLatin1String("pin")},
    Drawing {QLatin1String("sparkles"), QLatin1String("sparkles")},
    Drawing {QLatin1String("arrow.triangle.2.circlepath"), QLatin1String("refresh-cw")},
    Drawing {QLatin1String("terminal"), QLatin1String("square-terminal")},
    Drawing {QLatin1String("curlybraces"), QLatin1String("braces")},
    Drawing {QLatin1String("rectangle.bottomthird.inset.filled"), QLatin1String("panel-bottom")},
    Drawing {QLatin1String("power"), QLatin1String("power")},
    Drawing {QLatin1String("globe"), QLatin1String("globe")},
    Drawing {QLatin1String("info.circle"), QLatin1String("info")},
    Drawing {QLatin1String("xmark.rectangle"), QLatin1String("square-x")},
    Drawing {QLatin1String("checkmark"), QLatin1String("check")},
};

/// Sizes of menu icons, also on screens of two or three pixels a point.
constexpr std::array sizes {16, 24, 32, 48};

QByteArray svg(QLatin1String symbol)
{
    const auto *found = std::ranges::find(drawings, symbol, &Drawing::symbol);
    Q_ASSERT(found != drawings.end());
    QFile file(QLatin1String(":/qt/qml/Kestrelbay/icons/") % found->file % QLatin1String(".svg"));
    const bool open = file.open(QIODevice::ReadOnly);
    Q_ASSERT(open);
    return open ? file.readAll() : QByteArray();
}

QPixmap drawn(QSvgRenderer &renderer, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, size, size));
    return pixmap;
}

void add(QIcon &icon, QByteArray drawing, QIcon::Mode mode, const QColor &color)
{
    QSvgRenderer renderer(drawing.replace("currentColor", color.name().toLatin1()));
    for (const int size : sizes) {
        icon.addPixmap(drawn(renderer, size), mode);
    }
}

} // namespace

QIcon menuIcon(QLatin1String symbol)
{
    const QByteArray drawing = svg(symbol);
    const QPalette palette = QGuiApplication::palette();
    QIcon made;
    add(made, drawing, QIcon::Normal, palette.color(QPalette::Active, QPalette::Text));
    add(made, drawing, QIcon::Active, palette.color(QPalette::Active, QPalette::HighlightedText));
    add(made, drawing, QIcon::Disabled, palette.color(QPalette::Disabled, QPalette::Text));
    return made;
}
