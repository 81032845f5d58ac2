#pragma once

#include "indexer/Moment.h"
#include "indexer/Money.h"
#include "indexer/Usage.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace indexer {

/// Prices per token, in picodollars (a millionth of the usual dollars per million tokens).
struct Rates {
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t shortWrite = 0; // cache writes for five minutes
    std::int64_t longWrite = 0;  // and for an hour
    std::int64_t read = 0;       // from the cache
};

/// Rates that hold for the whole request once its prompt is longer than a limit.
struct LongPrompt {
    std::uint64_t above = 0; // tokens
    Rates rates;
};

struct PriceRow {
    TimePoint validFrom = TimePoint::min();
    Rates rates;
    std::optional<LongPrompt> longPrompt;
};

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
};

/// The list prices of all known models over time.
class PriceTable final {
public:
    /// Nothing where the price is not known: there is no guessing.
    [[nodiscard]] std::optional<Money> price(const PricedRequest &request) const;

    void set(const std::string &model, ModelPrices prices);
    /// Takes over the models of another table; its prices replace those held so far.
    void override(const PriceTable &other);

private:
    [[nodiscard]] const ModelPrices *find(std::string_view model) const;

    std::map<std::string, ModelPrices, std::less<>> m_models;
};

} // namespace indexer
