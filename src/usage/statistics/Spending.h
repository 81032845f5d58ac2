#pragma once

#include "usage/pricing/Sums.h"
#include "usage/values/Money.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace usage {

/// Sums of tokens; beyond the largest number they stay there.
struct TokenSums {
    std::uint64_t input = 0;
    std::uint64_t output = 0;
    std::uint64_t cacheWrite = 0;
    std::uint64_t cacheRead = 0;

    [[nodiscard]] bool operator==(const TokenSums &) const = default;
    [[nodiscard]] std::uint64_t total() const;

    TokenSums &operator+=(const TokenSums &other);
};

/// Why a cost is an estimate; what comes later here says more.
enum class Doubt : std::uint8_t {
    None,
    Incomplete, // some of it was not recorded to its end, or not request by request
    Assumed,    // nobody stated some of its prices
    Unknown     // some of its prices are not known
};

/// What one model used.
struct ModelSpending {
    TokenSums tokens;
    std::optional<Money> cost; // nothing when none of its prices is known
    Doubt doubt = Doubt::None;

    ModelSpending &operator+=(const ModelSpending &other);
};

/// What was used and what that cost, of a span of time or a session.
struct Spending {
    TokenSums tokens;
    /// By model id.
    std::map<std::string, ModelSpending, std::less<>> models;
    /// Whether the true cost is likely to be another.
    bool isEstimated = false;

    [[nodiscard]] bool isEmpty() const { return models.empty(); }
    /// Nothing when there was usage, but none of it has a known price.
    [[nodiscard]] std::optional<Money> cost() const;

    void add(std::string_view model, const Sum &sum);
    Spending &operator+=(const Spending &other);
};

} // namespace usage
