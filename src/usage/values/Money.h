#pragma once

#include <cstdint>

namespace usage {

/// An amount of US dollars, kept exactly, so that sums do not depend on their order.
class Money final {
public:
    /// Wide enough for any sum of valid prices and counts; beyond its end it stays there.
    __extension__ using Amount = __int128;

    Money() = default;
    explicit Money(Amount picodollars)
        : m_pico(picodollars)
    {
    }

    /// From dollars as a file states them; no less than nothing.
    [[nodiscard]] static Money ofDollars(double dollars);

    [[nodiscard]] bool operator==(const Money &) const = default;
    [[nodiscard]] Amount picodollars() const { return m_pico; }
    /// In dollars, rounded to the millionth.
    [[nodiscard]] double dollars() const;
    /// Rounded to the cent, half a cent up.
    [[nodiscard]] Amount cents() const;

    Money &operator+=(const Money &other);

private:
    Amount m_pico = 0;
};

} // namespace usage
