#include "views/RollingText.h"

QList<RollGlyph> RollingText::glyphs() const
{
    const qsizetype places = std::max(m_before.size(), m_shown.size());
    const auto at = [places](const QString &text, qsizetype place) {
        const qsizetype i = place - (places - text.size());
        return i < 0 ? QString() : QString(text.at(i));
    };
    QList<RollGlyph> list;
    list.reserve(places);
    for (qsizetype place = 0; place < places; ++place) {
        RollGlyph glyph;
        glyph.before = at(m_before, place);
        glyph.after = at(m_shown, place);
        glyph.rolls = glyph.before != glyph.after;
        list.append(glyph);
    }
    return list;
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
