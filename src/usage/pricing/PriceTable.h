#pragma once

#include "usage/pricing/PriceRow.h"
#include "usage/values/Money.h"
#include "usage/values/Usage.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace usage {

/// All prices of one model.
struct ModelPrices {
    std::vector<PriceRow> rows;                  // oldest first
    std::optional<std::int64_t> fastThousandths; // what fast mode multiplies with, where known
    std::vector<std::string> aliases;            // other ids of the same model
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

/// A price, and how sure it is.
struct Price {
    Money cost;
    bool isTooLow = false;  // the true one may be higher
    bool isAssumed = false; // nobody stated a rate that it was made by
};

/// The list prices of all known models over time.
class PriceTable final {
public:
    /// Nothing where the price is not known: there is no guessing.
    [[nodiscard]] std::optional<Price> price(const PricedRequest &request) const;

    /// The id that the table lists a model by; one that it does not know stays as it is.
    [[nodiscard]] std::string_view baseId(std::string_view model) const;

    /// Tells this table from others.
    [[nodiscard]] std::uint64_t hash() const;

    void set(const std::string &model, ModelPrices prices);
    /// Takes over the models of another table; its prices replace those held so far, but where it
    /// does not tell what fast mode costs, that stays.
    void override(const PriceTable &other);

private:
    using Models = std::map<std::string, ModelPrices, std::less<>>;

    [[nodiscard]] Models::const_iterator find(std::string_view model) const;

    Models m_models;
    std::map<std::string, std::string, std::less<>> m_aliases; // and what they stand for
};

} // namespace usage
