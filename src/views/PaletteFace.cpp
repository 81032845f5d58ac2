#include "views/PaletteFace.h"

namespace {

QColor color(const Palette::Color &c)
{
    return QColor::fromRgbF(static_cast<float>(c.red), static_cast<float>(c.green),
        static_cast<float>(c.blue), static_cast<float>(c.alpha));
}

QColor toneColor(std::uint32_t tone)
{
    return color(Palette::opaque(tone));
}

} // namespace

QColor PaletteFace::primary()
{
    return color(Palette::primary);
}

QColor PaletteFace::secondary()
{
    return color(Palette::secondary);
}

QColor PaletteFace::tertiary()
{
    return color(Palette::tertiary);
}

QColor PaletteFace::strong()
{
    return color(Palette::strong);
}

QColor PaletteFace::track()
{
    return color(Palette::track);
}

QColor PaletteFace::icon()
{
    return color(Palette::icon);
}

QColor PaletteFace::emptyBar()
{
    return color(Palette::emptyBar);
}

QColor PaletteFace::surface()
{
    return color(Palette::surface);
}

QColor PaletteFace::chosen()
{
    return color(Palette::chosen);
}

QColor PaletteFace::red()
{
    return toneColor(Palette::red);
}

QColor PaletteFace::orange()
{
    return toneColor(Palette::orange);
}

QColor PaletteFace::green()
{
    return toneColor(Palette::green);
}

QColor PaletteFace::accent()
{
    return toneColor(Palette::accent);
}

QList<QColor> PaletteFace::models()
{
    QList<QColor> colors;
    for (const std::uint32_t tone : Palette::models) {
        colors << toneColor(tone);
    }
    return colors;
}

QColor PaletteFace::tone(double percent)
{
    return toneColor(Palette::toneHex(percent));
}
