#include "indexer/Money.h"

namespace indexer {

double Money::dollars() const
{
    constexpr Amount perMillionth = 1'000'000;
    constexpr double millionths = 1e6;
    // An exact division by a power of ten is the double nearest to the decimal number.
    const Amount whole =
        m_pico / perMillionth + (m_pico % perMillionth >= perMillionth / 2 ? 1 : 0);
    return static_cast<double>(whole) / millionths;
}

Money &Money::operator+=(const Money &other)
{
    constexpr Amount largest = ~(static_cast<Amount>(1) << 127U);
    if (__builtin_add_overflow(m_pico, other.m_pico, &m_pico)) {
        m_pico = largest;
    }
    return *this;
}

} // namespace indexer
