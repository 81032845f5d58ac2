#pragma once

#include <optional>

/// Token counts of some span. Cache reads are part of `total` only.
struct TokenSet {
    std::optional<double> input;
    std::optional<double> output;
    std::optional<double> cacheWrite;
    std::optional<double> total;

    /// The tokens that count as spent: input, output and cache writes; the total only when those
    /// three give nothing.
    [[nodiscard]] double spent() const
    {
        const double parts = input.value_or(0) + output.value_or(0) + cacheWrite.value_or(0);
        return parts > 0 ? parts : total.value_or(0);
    }

    bool operator==(const TokenSet &) const = default;
};
