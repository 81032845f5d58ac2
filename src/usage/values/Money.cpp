#include "usage/values/Money.h"

#include <algorithm>
#include <cmath>

namespace usage {

namespace {

constexpr Money::Amount perMillionth = 1'000'000;
constexpr double millionths = 1e6;

} // namespace

Money Money::ofDollars(double dollars)
{
    constexpr double most = 1e12;
    return Money(perMillionth * std::llround(std::clamp(dollars, 0.0, most) * millionths));
}

double Money::dollars() const
{
    // An exact division by a power of ten is the double nearest to the decimal number.
    const Amount whole =
        m_pico / perMillionth + (m_pico % perMillionth >= perMillionth / 2 ? 1 : 0);
    return static_cast<double>(whole) / millionths;
}

Money::Amount Money::cents() const
{
    constexpr Amount perCent = 10'000'000'000;
    return m_pico / perCent + (m_pico % perCent >= perCent / 2 ? 1 : 0);
}

Money &Money::operator+=(const Money &other)
{
    constexpr Amount largest = ~(static_cast<Amount>(1) << 127U);
    if (__builtin_add_overflow(m_pico, other.m_pico, &m_pico)) {
        m_pico = largest;
    }
    return *this;
}

} // namespace usage
