#pragma once

#include "views/theme/Palette.h"
#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The palette as QML sees it; Qt Quick has a type named Palette of its own.
class PaletteFace final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Colors)
    QML_SINGLETON
    Q_PROPERTY(QColor primary READ primary CONSTANT)
    Q_PROPERTY(QColor secondary READ secondary CONSTANT)
    Q_PROPERTY(QColor tertiary READ tertiary CONSTANT)
    Q_PROPERTY(QColor strong READ strong CONSTANT)
    Q_PROPERTY(QColor track READ track CONSTANT)
    Q_PROPERTY(QColor icon READ icon CONSTANT)
    Q_PROPERTY(QColor emptyBar READ emptyBar CONSTANT)
    Q_PROPERTY(QColor surface READ surface CONSTANT)
    Q_PROPERTY(QColor chosen READ chosen CONSTANT)
    Q_PROPERTY(QColor red READ red CONSTANT)
    Q_PROPERTY(QColor orange READ orange CONSTANT)
    Q_PROPERTY(QColor green READ green CONSTANT)
    Q_PROPERTY(QColor accent READ accent CONSTANT)
    Q_PROPERTY(QList<QColor> models READ models CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] static QColor primary();
    [[nodiscard]] static QColor secondary();
    [[nodiscard]] static QColor tertiary();
    [[nodiscard]] static QColor strong();
    [[nodiscard]] static QColor track();
    [[nodiscard]] static QColor icon();
    [[nodiscard]] static QColor emptyBar();
    [[nodiscard]] static QColor surface();
    [[nodiscard]] static QColor chosen();
    [[nodiscard]] static QColor red();
    [[nodiscard]] static QColor orange();
    [[nodiscard]] static QColor green();
    [[nodiscard]] static QColor accent();
    [[nodiscard]] static QList<QColor> models();
    /// The tone of a used percentage.
    Q_INVOKABLE [[nodiscard]] static QColor tone(double percent);
};
