#pragma once

#include "widget/views/theme/ThemeTable.h"
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
    THEME_ROW(QColor, red, argb(0xFFFF453A))
    THEME_ROW(QColor, orange, argb(0xFFFF9F0A))
    THEME_ROW(QColor, green, argb(0xFF30D158))
    THEME_ROW(QColor, accent, argb(0xFF0A84FF))

public:
    /// A colour of one number, 0xAARRGGBB.
    [[nodiscard]] static QColor argb(std::uint32_t color) { return QColor::fromRgba(color); }

    /// The tone of a used percentage: traffic lights that change at 60 and at 85.
    [[nodiscard]] static QColor toneHex(double percent)
    {
        if (percent >= 85) {
            return red();
        }
        return percent >= 60 ? orange() : green();
    }

    /// The tones that tell the models of a legend from one another, in this order.
    static constexpr std::array<std::uint32_t, 8> models {0xFF0A84FF, 0xFFBF5AF2, 0xFF64D2FF,
        0xFFFFD60A, 0xFFFF9F0A, 0xFF30D158, 0xFFFF375F, 0xFFAC8E68};

    /// That of the n-th model; they are used again after the last.
    [[nodiscard]] static QColor model(qsizetype n)
    {
        return argb(models.at(static_cast<std::size_t>(n) % models.size()));
    }

private:
    static QColor rgba(int red, int green, int blue, float alpha)
    {
        QColor color(red, green, blue);
        color.setAlphaF(alpha);
        return color;
    }
};
