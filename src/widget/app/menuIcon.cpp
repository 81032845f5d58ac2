#include "widget/app/menuIcon.h"

#include "widget/views/drawIcon.h"
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

namespace {

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
    explicit Engine(QLatin1String drawing)
        : m_drawing(drawing)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        drawIcon(*painter, m_drawing, rect, colorOf(mode));
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
    QLatin1String m_drawing;
};

} // namespace

QIcon menuIcon(QLatin1String drawing)
{
    return QIcon(new Engine(drawing));
}
