#include "views/RollingText.h"

#include <cmath>
#include <QFontMetricsF>
#include <QPainter>

namespace {

/// The sign at a place, where texts of different lengths end at the same place.
QString signAt(const QString &text, qsizetype place, qsizetype places)
{
    const qsizetype i = place - (places - text.size());
    return i < 0 ? QString() : QString(text.at(i));
}

} // namespace

RollingText::RollingText(QQuickItem *parent)
    : DrawnItem(parent)
{
    connect(this, &RollingText::shownChanged, this, &RollingText::fit);
    connect(this, &RollingText::lookChanged, this, &RollingText::fit);
}

void RollingText::setText(const QString &text)
{
    if (text == m_text) {
        return;
    }
    m_text = text;
    Q_EMIT textChanged();
    if (m_first) {
        m_first = false;
        m_shown = text;
        m_before = text;
        m_shownValue = m_value;
        Q_EMIT shownChanged();
        return;
    }
    // Text and value arrive one after the other; the direction is known when both are there.
    if (!m_pending) {
        m_pending = true;
        QMetaObject::invokeMethod(this, &RollingText::roll, Qt::QueuedConnection);
    }
}

void RollingText::setValue(double value)
{
    m_value = value;
    Q_EMIT valueChanged();
}

void RollingText::setProgress(double progress)
{
    m_progress = progress;
    Q_EMIT progressChanged();
    update();
}

void RollingText::roll()
{
    m_pending = false;
    if (m_text == m_shown) {
        m_shownValue = m_value;
        return;
    }
    m_before = m_shown;
    m_shown = m_text;
    m_direction = m_value < m_shownValue ? -1 : 1;
    m_shownValue = m_value;
    Q_EMIT shownChanged();
    Q_EMIT rolled();
}

void RollingText::fit()
{
    const QFontMetricsF metrics(m_font);
    double width = 0;
    for (const QChar sign : m_shown) {
        width += metrics.horizontalAdvance(sign);
    }
    setImplicitSize(std::ceil(width), std::ceil(metrics.height()));
    update();
}

void RollingText::draw(QPainter &painter) const
{
    const QFontMetricsF metrics(m_font);
    const double height = std::ceil(metrics.height());
    const double travelled = m_direction * m_progress * height;
    const qsizetype places = std::max(m_before.size(), m_shown.size());
    painter.setFont(m_font);
    painter.setPen(m_color);
    double left = 0;
    for (qsizetype place = 0; place < places; ++place) {
        const QString before = signAt(m_before, place, places);
        const QString after = signAt(m_shown, place, places);
        const double width = metrics.horizontalAdvance(after);
        const QPointF rest(left, metrics.ascent());
        if (before == after) {
            painter.drawText(rest, after);
        } else {
            painter.setClipRect(QRectF(left, 0, width, height));
            painter.drawText(rest - QPointF(0, travelled), before);
            painter.drawText(rest + QPointF(0, m_direction * height - travelled), after);
            painter.setClipping(false);
        }
        left += width;
    }
}

#include "moc_RollingText.cpp"
