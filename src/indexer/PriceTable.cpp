#include "indexer/PriceTable.h"

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

Money::Amount listPrice(const Usage &usage, const Rates &rates)
{
    const auto part = [](std::uint64_t tokens, std::int64_t rate) {
        return static_cast<Money::Amount>(tokens) * rate;
    };
    return part(usage.input, rates.input) + part(usage.output, rates.output)
        + part(usage.shortWrites(), rates.shortWrite) + part(usage.oneHour, rates.longWrite)
        + part(usage.cacheRead, rates.read);
}

} // namespace

std::optional<Money> PriceTable::price(const PricedRequest &request) const
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
    const Rates &rates = isLong ? row->longPrompt->rates : row->rates;
    constexpr auto whole = static_cast<Money::Amount>(thousandths) * thousandths;
    return Money(listPrice(request.usage, rates) * *speed * *tier / whole);
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
