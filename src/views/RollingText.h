#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// One place of a text that changes: what stood there and what comes.
class RollGlyph final {
    Q_GADGET
    QML_VALUE_TYPE(rollGlyph)
    Q_PROPERTY(QString before MEMBER before)
    Q_PROPERTY(QString after MEMBER after)
    Q_PROPERTY(bool rolls MEMBER rolls)

public:
    QString before;
    QString after;
    bool rolls = false; ///< the two differ

    bool operator==(const RollGlyph &) const = default;
};

/// Watches a text and says how to draw its change: digit by digit in the direction of its value, or
/// as a whole. Places are paired from the right, as the digits of a number are.
class RollingText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged REQUIRED)
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(QString shown READ shown NOTIFY shownChanged)
    Q_PROPERTY(QString before READ before NOTIFY shownChanged)
    Q_PROPERTY(int direction READ direction NOTIFY shownChanged)
    Q_PROPERTY(QList<RollGlyph> glyphs READ glyphs NOTIFY shownChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QString text() const { return m_text; }
    [[nodiscard]] double value() const { return m_value; }
    /// The text after the newest change.
    [[nodiscard]] QString shown() const { return m_shown; }
    /// The text before it.
    [[nodiscard]] QString before() const { return m_before; }
    /// 1 rolls upwards (the value has grown, or has stayed), −1 downwards.
    [[nodiscard]] int direction() const { return m_direction; }
    [[nodiscard]] QList<RollGlyph> glyphs() const;

    void setText(const QString &text);
    void setValue(double value);

Q_SIGNALS:
    void textChanged();
    void valueChanged();
    void shownChanged();
    /// One text has taken the place of another, which is to be seen.
    void rolled();

private:
    void roll();

    QString m_text;
    double m_value = 0;
    QString m_shown;
    QString m_before;
    double m_shownValue = 0;
    int m_direction = 1;
    bool m_pending = false;
    bool m_first = true;
};
