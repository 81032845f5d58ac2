#pragma once

#include "views/theme/ThemeTable.h"
#include <array>
#include <QColor>

/// The colours of every drawn element. QML knows it as Colors, because Qt Quick has a type named
/// Palette of its own.
class Palette final : public ThemeTable {
    Q_OBJECT
    THEME_ROW(QColor, primary, rgba(245, 245, 247, 1))              ///< main text
    THEME_ROW(QColor, secondary, rgba(235, 235, 245, 166 / 255.0F)) ///< secondary text
    THEME_ROW(QColor, tertiary, rgba(235, 235, 245, 0.4F))          ///< faint text, captions
    THEME_ROW(QColor, strong, rgba(235, 235, 245, 1))               ///< emphasised text
    THEME_ROW(QColor, track, rgba(255, 255, 255, 31 / 255.0F))      ///< unfilled tracks
    THEME_ROW(QColor, icon, rgba(235, 235, 245, 140 / 255.0F))      ///< icons of buttons
    THEME_ROW(QColor, emptyBar, rgba(255, 255, 255, 38 / 255.0F))   ///< empty bars
    THEME_ROW(QColor, surface, rgba(28, 28, 30, 0.96F))             ///< the panel itself
    THEME_ROW(QColor, chosen, rgba(255, 255, 255, 0.18F)) ///< the taken one of several choices
    THEME_ROW(QColor, red, QColor::fromRgb(0xFF453A))
    THEME_ROW(QColor, orange, QColor::fromRgb(0xFF9F0A))
    THEME_ROW(QColor, green, QColor::fromRgb(0x30D158))
    THEME_ROW(QColor, accent, QColor::fromRgb(0x0A84FF))

public:
    /// The tone of a used percentage: traffic lights that change at 60 and at 85.
    [[nodiscard]] static QColor tone(double percent)
    {
        if (percent >= 85) {
            return red();
        }
        return percent >= 60 ? orange() : green();
    }

    /// The tone that tells the n-th model of a legend from the others; they are used again after
    /// the last.
    [[nodiscard]] static QColor model(qsizetype n)
    {
        constexpr std::array<QRgb, 8> tones {
            0x0A84FF, 0xBF5AF2, 0x64D2FF, 0xFFD60A, 0xFF9F0A, 0x30D158, 0xFF375F, 0xAC8E68};
        return QColor::fromRgb(tones.at(static_cast<std::size_t>(n) % tones.size()));
    }

private:
    static QColor rgba(int red, int green, int blue, float alpha)
    {
        QColor color(red, green, blue);
        color.setAlphaF(alpha);
        return color;
    }
};
