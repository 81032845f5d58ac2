#pragma once

#include "widget/views/DrawnItem.h"
#include <QColor>
#include <QFont>

/// Watches a text and draws its change: each place that differs rolls in the direction of the
/// value, or all of it fades into the new. Places are paired from the right, as the digits of a
/// number are.
class RollingText : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged REQUIRED)
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(bool digits MEMBER m_digits NOTIFY lookChanged)
    Q_PROPERTY(QString shown READ shown NOTIFY shownChanged)
    Q_PROPERTY(QFont font MEMBER m_font NOTIFY lookChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)
    Q_PROPERTY(double progress READ progress WRITE setProgress NOTIFY progressChanged)

public:
    explicit RollingText(QQuickItem *parent = nullptr);

    [[nodiscard]] QString text() const { return m_text; }
    /// The first text is simply there.
    void setText(const QString &text);
    [[nodiscard]] double value() const { return m_value; }
    void setValue(double value);
    /// The text after the newest change.
    [[nodiscard]] QString shown() const { return m_shown; }
    /// How far the change is, from 0 for the text before to 1.
    [[nodiscard]] double progress() const { return m_progress; }
    void setProgress(double progress);

    void draw(QPainter &painter) const override;

Q_SIGNALS:
    void textChanged();
    void valueChanged();
    void shownChanged();
    void lookChanged();
    void progressChanged();
    /// One text has taken the place of another, which is to be seen.
    void rolled();

private:
    void roll();
    void fit();
    void drawRolling(QPainter &painter) const;

    QString m_text;
    double m_value = 0;
    QString m_shown;
    QString m_before;
    double m_shownValue = 0;
    bool m_digits = true;
    QFont m_font;
    QColor m_color;
    double m_progress = 1;
    int m_direction = 1; ///< 1 rolls upwards (the value has grown, or has stayed), −1 downwards
    bool m_pending = false;
    bool m_first = true;
};
