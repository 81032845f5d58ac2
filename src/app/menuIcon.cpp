#include "app/menuIcon.h"

#include "views/drawIcon.h"
#include <algorithm>
#include <array>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

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

QString fileOf(QLatin1String symbol)
{
    const auto *found = std::ranges::find(drawings, symbol, &Drawing::symbol);
    Q_ASSERT(found != drawings.end());
    return found->file;
}

QColor colorOf(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Disabled:
        return palette.color(QPalette::Disabled, QPalette::Text);
    case QIcon::Active:
    case QIcon::Selected:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    case QIcon::Normal:
        break;
    }
    return palette.color(QPalette::Active, QPalette::Text);
}

/// Draws when it is asked to: most runs of the program never open the menu.
class Engine final : public QIconEngine {
public:
    explicit Engine(QLatin1String symbol)
        : m_symbol(symbol)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        drawIcon(*painter, fileOf(m_symbol), rect, colorOf(mode));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine *clone() const override { return new Engine(*this); }

private:
    QLatin1String m_symbol;
};

} // namespace

QIcon menuIcon(QLatin1String symbol)
{
    return QIcon(new Engine(symbol));
}
