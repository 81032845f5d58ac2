#pragma once

#include <array>
#include <cstdint>

/// The colours of every drawn element.
namespace Palette {

/// An sRGB colour, each channel 0…1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;

    bool operator==(const Color &) const = default;
};

/// The colour of one number laid out as 0xAARRGGBB.
[[nodiscard]] constexpr Color argb(std::uint32_t value)
{
    const auto channel = [value](unsigned shift) { return ((value >> shift) & 0xFFU) / 255.0; };
    return {channel(16), channel(8), channel(0), channel(24)};
}

/// A tone (0xRRGGBB) as an opaque colour.
[[nodiscard]] constexpr Color opaque(std::uint32_t tone)
{
    return argb(0xFF000000U | tone);
}

/// A colour of 0…255 channels with an opacity of its own.
[[nodiscard]] constexpr Color rgba(int red, int green, int blue, double alpha)
{
    return {red / 255.0, green / 255.0, blue / 255.0, alpha};
}

inline constexpr Color primary = rgba(245, 245, 247, 1.0);           ///< main text
inline constexpr Color secondary = rgba(235, 235, 245, 166 / 255.0); ///< secondary text
inline constexpr Color tertiary = rgba(235, 235, 245, 0.4);          ///< faint text, captions
inline constexpr Color strong = rgba(235, 235, 245, 1.0);            ///< emphasised text
inline constexpr Color track = rgba(255, 255, 255, 31 / 255.0);      ///< unfilled tracks
inline constexpr Color icon = rgba(235, 235, 245, 140 / 255.0);      ///< icons of buttons
inline constexpr Color emptyBar = rgba(255, 255, 255, 38 / 255.0);   ///< empty bars
inline constexpr Color surface = rgba(28, 28, 30, 0.96);             ///< the panel itself
inline constexpr Color chosen = rgba(255, 255, 255, 0.18); ///< the taken one of several choices

// Tones, 0xRRGGBB.
inline constexpr std::uint32_t red = 0xFF453A;
inline constexpr std::uint32_t orange = 0xFF9F0A;
inline constexpr std::uint32_t green = 0x30D158;
inline constexpr std::uint32_t accent = 0x0A84FF;

/// Tones that tell models apart, given out in this order.
inline constexpr std::array<std::uint32_t, 8> models {
    0x0A84FF, 0xBF5AF2, 0x64D2FF, 0xFFD60A, 0xFF9F0A, 0x30D158, 0xFF375F, 0xAC8E68};

/// The tone of a used percentage: traffic lights that change at 60 and at 85.
[[nodiscard]] constexpr std::uint32_t toneHex(double percent)
{
    if (percent >= 85) {
        return red;
    }
    return percent >= 60 ? orange : green;
}

} // namespace Palette
