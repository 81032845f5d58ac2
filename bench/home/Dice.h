#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <string>

/// A seeded generator: the same seed makes the same home on every machine.
class Dice final {
public:
    explicit Dice(std::uint64_t seed)
        : m_state(seed)
    {
    }

    std::uint64_t next()
    {
        m_state += 0x9E3779B97F4A7C15;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EB;
        return mixed ^ (mixed >> 31U);
    }

    /// In [0, 1).
    double share() { return static_cast<double>(next() >> 11U) * 0x1p-53; }

    /// Both ends included.
    std::uint64_t whole(std::uint64_t low, std::uint64_t high)
    {
        return low + next() % (high - low + 1);
    }

    /// Every order of magnitude between the two is as likely.
    double between(double low, double high) { return low * std::pow(high / low, share()); }

    std::string hex(std::size_t count)
    {
        std::string text(count, '0');
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < count; ++i, bits >>= 4U) {
            bits = i % 16 == 0 ? next() : bits;
            text[i] = "0123456789abcdef"[bits & 15U];
        }
        return text;
    }

    std::string uuid()
    {
        std::string text = hex(36);
        for (const std::size_t dash : {8, 13, 18, 23}) {
            text[dash] = '-';
        }
        return text;
    }

private:
    std::uint64_t m_state;
};
