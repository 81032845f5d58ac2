#include "widget/views/RollingText.h"

#include <cmath>
#include <QFontMetricsF>
#include <QPainter>

namespace {

/// One place of a text that changes. Texts of different lengths end at the same place.
struct Place {
    QString sign;               ///< nothing where the text has not begun
    std::optional<double> left; ///< where it stands in the whole text, kerning and all
};

Place placeOf(const QString &text, qsizetype place, qsizetype places, const QFontMetricsF &metrics)
{
    const qsizetype i = place - (places - text.size());
    return i < 0 ? Place()
                 : Place {text.at(i), metrics.horizontalAdvance(text, static_cast<int>(i))};
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
    const double width =
        std::max(metrics.horizontalAdvance(m_before), metrics.horizontalAdvance(m_shown));
    setImplicitSize(std::ceil(width), std::ceil(metrics.height()));
    update();
}

void RollingText::draw(QPainter &painter) const
{
    painter.setFont(m_font);
    painter.setPen(m_color);
    if (m_digits) {
        drawRolling(painter);
        return;
    }
    const QPointF rest(0, QFontMetricsF(m_font).ascent());
    painter.setOpacity(1 - m_progress);
    painter.drawText(rest, m_before);
    painter.setOpacity(m_progress);
    painter.drawText(rest, m_shown);
}

void RollingText::drawRolling(QPainter &painter) const
{
    const QFontMetricsF metrics(m_font);
    const QSizeF size(implicitWidth(), implicitHeight());
    const QPointF leaving(0, -m_direction * m_progress * size.height());
    const QPointF coming(0, m_direction * (1 - m_progress) * size.height());
    painter.setClipRect(QRectF(QPointF(), size));
    const qsizetype places = std::max(m_before.size(), m_shown.size());
    for (qsizetype i = 0; i < places; ++i) {
        const Place before = placeOf(m_before, i, places, metrics);
        const Place after = placeOf(m_shown, i, places, metrics);
        const double from = before.left.value_or(after.left.value_or(0));
        const double left = std::lerp(from, after.left.value_or(from), m_progress);
        const QPointF rest(left, metrics.ascent());
        if (before.sign == after.sign) {
            painter.drawText(rest, after.sign);
        } else {
            painter.drawText(rest + leaving, before.sign);
            painter.drawText(rest + coming, after.sign);
        }
    }
}

#include "moc_RollingText.cpp"
