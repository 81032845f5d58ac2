#include "views/IconShape.h"

#include <QFile>
#include <QPainter>
#include <QQmlContext>
#include <QSvgRenderer>

void IconShape::setSource(const QUrl &source)
{
    m_source = source;
    Q_EMIT sourceChanged();
    update();
}

void IconShape::setColor(const QColor &color)
{
    m_color = color;
    Q_EMIT colorChanged();
    update();
}

void IconShape::draw(QPainter &painter) const
{
    QFile file(u':' % qmlContext(this)->resolvedUrl(m_source).path());
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("no icon %s", qUtf8Printable(m_source.toString()));
        return;
    }
    QSvgRenderer drawing(file.readAll().replace("currentColor", m_color.name().toLatin1()));
    painter.setOpacity(m_color.alphaF());
    drawing.render(&painter, boundingRect());
}

#include "moc_IconShape.cpp"
