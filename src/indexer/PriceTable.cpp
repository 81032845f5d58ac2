#include "indexer/PriceTable.h"

#include "indexer/HashOf.h"
#include "indexer/Packed.h"

#include <algorithm>

namespace indexer {

namespace {

constexpr std::int64_t thousandths = 1000;
constexpr std::int64_t batchThousandths = 500;

std::string_view withoutSuffix(std::string_view id)
{
    constexpr std::string_view suffix = "[1m]";
    return id.ends_with(suffix) ? id.substr(0, id.size() - suffix.size()) : id;
}

/// Removes "-YYYYMMDD" at the end.
std::string_view withoutDate(std::string_view id)
{
    constexpr std::size_t length = 9;
    if (id.size() <= length) {
        return id;
    }
    const std::string_view date = id.substr(id.size() - length);
    const bool isDate =
        date.front() == '-' && date.find_first_not_of("0123456789", 1) == std::string_view::npos;
    return isDate ? id.substr(0, id.size() - length) : id;
}

std::string_view withoutProvider(std::string_view id)
{
    const std::size_t slash = id.rfind('/');
    return slash == std::string_view::npos ? id : id.substr(slash + 1);
}

std::optional<std::int64_t> speedThousandths(const ModelPrices &model, Speed speed)
{
    switch (speed) {
    case Speed::Standard:
        return thousandths;
    case Speed::Fast:
        return model.fastThousandths;
    case Speed::Other:
        break;
    }
    return std::nullopt;
}

std::optional<std::int64_t> tierThousandths(ServiceTier tier)
{
    switch (tier) {
    case ServiceTier::Standard:
        return thousandths;
    case ServiceTier::Batch:
        return batchThousandths;
    case ServiceTier::Other:
        break;
    }
    return std::nullopt;
}

/// Nothing when a rate is not known that is needed.
std::optional<Money::Amount> listPrice(const Usage &usage, const Rates &rates)
{
    Money::Amount sum = 0;
    bool isKnown = true;
    const auto add = [&](std::uint64_t tokens, Rate rate) {
        isKnown = isKnown && (rate || tokens == 0);
        sum += static_cast<Money::Amount>(tokens) * rate.value_or(0);
    };
    add(usage.input, rates.input);
    add(usage.output, rates.output);
    add(usage.shortWrites(), rates.shortWrite);
    add(usage.oneHour, rates.longWrite);
    add(usage.cacheRead, rates.read);
    return isKnown ? std::optional(sum) : std::nullopt;
}

} // namespace

std::optional<Price> PriceTable::price(const PricedRequest &request) const
{
    const ModelPrices *model = find(request.model);
    if (model == nullptr) {
        return std::nullopt;
    }
    const auto row = std::find_if(model->rows.rbegin(), model->rows.rend(),
        [&request](const PriceRow &candidate) { return candidate.validFrom <= request.time; });
    const auto speed = speedThousandths(*model, request.speed);
    const auto tier = tierThousandths(request.tier);
    if (row == model->rows.rend() || !speed || !tier) {
        return std::nullopt;
    }
    const bool isLong = row->longPrompt && request.usage.prompt() > row->longPrompt->above;
    const Rates &rates = isLong && !request.isSum ? row->longPrompt->rates : row->rates;
    const auto list = listPrice(request.usage, rates);
    if (!list) {
        return std::nullopt;
    }
    constexpr auto whole = static_cast<Money::Amount>(thousandths) * thousandths;
    return Price {Money(*list * *speed * *tier / whole), isLong && request.isSum};
}

/// Looks the id up as it stands, then without what does not change the price.
const ModelPrices *PriceTable::find(std::string_view model) const
{
    for (const bool stripProvider : {false, true}) {
        for (const bool stripDate : {false, true}) {
            for (const bool stripSuffix : {false, true}) {
                std::string_view id = stripSuffix ? withoutSuffix(model) : model;
                id = stripDate ? withoutDate(id) : id;
                id = stripProvider ? withoutProvider(id) : id;
                if (const auto found = m_models.find(id); found != m_models.end()) {
                    return &found->second;
                }
            }
        }
    }
    return nullptr;
}

std::uint64_t PriceTable::hash() const
{
    PackedWriter writer;
    const auto putRate = [&writer](Rate rate) { writer.signedNumber(rate.value_or(-1)); };
    const auto putRates = [&putRate](const Rates &rates) {
        for (const Rate rate :
            {rates.input, rates.output, rates.shortWrite, rates.longWrite, rates.read}) {
            putRate(rate);
        }
    };
    for (const auto &[id, model] : m_models) {
        writer.text(id);
        putRate(model.fastThousandths);
        for (const PriceRow &row : model.rows) {
            writer.signedNumber(row.validFrom.time_since_epoch().count());
            putRates(row.rates);
            writer.number(row.longPrompt ? row.longPrompt->above + 1 : 0);
            putRates(row.longPrompt.value_or(LongPrompt {}).rates);
        }
        writer.text({});
    }
    return hashOf(writer.bytes());
}

void PriceTable::set(const std::string &model, ModelPrices prices)
{
    std::stable_sort(prices.rows.begin(), prices.rows.end(),
        [](const PriceRow &a, const PriceRow &b) { return a.validFrom < b.validFrom; });
    m_models[model] = std::move(prices);
}

void PriceTable::override(const PriceTable &other)
{
    for (const auto &[model, prices] : other.m_models) {
        ModelPrices &own = m_models[model];
        own.rows = prices.rows;
        own.fastThousandths = prices.fastThousandths ? prices.fastThousandths : own.fastThousandths;
    }
}

} // namespace indexer
