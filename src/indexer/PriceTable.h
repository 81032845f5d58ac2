#pragma once

#include "indexer/Money.h"
#include "indexer/PriceRow.h"
#include "indexer/Usage.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace indexer {

/// All prices of one model.
struct ModelPrices {
    std::vector<PriceRow> rows;                  // oldest first
    std::optional<std::int64_t> fastThousandths; // what fast mode multiplies with, where known
};

/// What is to be priced: one request to a model.
struct PricedRequest {
    std::string_view model;
    TimePoint time {};
    Usage usage;
    Speed speed = Speed::Standard;
    ServiceTier tier = ServiceTier::Standard;
    bool isSum = false; // of several requests: its size tells nothing of theirs
};

/// A price, and whether the true one may be higher.
struct Price {
    Money cost;
    bool isEstimated = false;
};

/// The list prices of all known models over time.
class PriceTable final {
public:
    /// Nothing where the price is not known: there is no guessing.
    [[nodiscard]] std::optional<Price> price(const PricedRequest &request) const;

    /// Tells this table from others.
    [[nodiscard]] std::uint64_t hash() const;

    void set(const std::string &model, ModelPrices prices);
    /// Takes over the models of another table; its prices replace those held so far, but where it
    /// does not tell what fast mode costs, that stays.
    void override(const PriceTable &other);

private:
    [[nodiscard]] const ModelPrices *find(std::string_view model) const;

    std::map<std::string, ModelPrices, std::less<>> m_models;
};

} // namespace indexer
