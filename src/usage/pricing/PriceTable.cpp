#include "usage/pricing/PriceTable.h"

#include "usage/values/HashOf.h"
#include "usage/values/Packed.h"

#include <algorithm>

namespace usage {

namespace {

constexpr std::int64_t thousandths = 1000;
constexpr std::int64_t batchThousandths = 500;

std::string_view withoutSuffix(std::string_view id)
{
    constexpr std::string_view suffix = "[1m]";
    return id.ends_with(suffix) ? id.substr(0, id.size() - suffix.size()) : id;
}

/// Whether a text is of the form of another, in which each 0 stands for any digit.
bool isLike(std::string_view text, std::string_view form)
{
    return std::ranges::equal(text, form,
        [](char c, char wanted) { return wanted == '0' ? c >= '0' && c <= '9' : c == wanted; });
}

/// Removes "-YYYYMMDD" or "-YYYY-MM-DD" at the end.
std::string_view withoutDate(std::string_view id)
{
    for (const std::string_view form : {"-00000000", "-0000-00-00"}) {
        if (id.size() > form.size() && isLike(id.substr(id.size() - form.size()), form)) {
            return id.substr(0, id.size() - form.size());
        }
    }
    return id;
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

struct ListPrice {
    Money::Amount picodollars = 0;
    bool isAssumed = false;
};

/// Nothing when a rate is not known that is needed.
std::optional<ListPrice> listPrice(const Usage &usage, const Rates &rates)
{
    ListPrice sum;
    bool isKnown = true;
    const auto add = [&](std::uint64_t tokens, Rate rate) {
        isKnown = isKnown && (rate.picodollars || tokens == 0);
        sum.picodollars += static_cast<Money::Amount>(tokens) * rate.picodollars.value_or(0);
        sum.isAssumed = sum.isAssumed || (rate.isAssumed && tokens > 0);
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
    const auto found = find(request.model);
    if (found == m_models.end()) {
        return std::nullopt;
    }
    const ModelPrices &model = found->second;
    const auto row = std::find_if(model.rows.rbegin(), model.rows.rend(),
        [&request](const PriceRow &candidate) { return candidate.validFrom <= request.time; });
    const auto speed = speedThousandths(model, request.speed);
    const auto tier = tierThousandths(request.tier);
    if (row == model.rows.rend() || !speed || !tier) {
        return std::nullopt;
    }
    const bool isLong = row->longPrompt && request.usage.prompt() > row->longPrompt->above;
    const Rates &rates = isLong && !request.isSum ? row->longPrompt->rates : row->rates;
    const auto list = listPrice(request.usage, rates);
    if (!list) {
        return std::nullopt;
    }
    constexpr auto whole = static_cast<Money::Amount>(thousandths) * thousandths;
    return Price {.cost = Money(list->picodollars * *speed * *tier / whole),
        .isTooLow = isLong && request.isSum,
        .isAssumed = list->isAssumed};
}

std::string_view PriceTable::baseId(std::string_view model) const
{
    const auto found = find(model);
    return found == m_models.end() ? model : found->first;
}

/// Looks the id up as it stands, then without what does not change the price.
PriceTable::Models::const_iterator PriceTable::find(std::string_view model) const
{
    for (const bool stripProvider : {false, true}) {
        for (const bool stripDate : {false, true}) {
            for (const bool stripSuffix : {false, true}) {
                std::string_view id = stripSuffix ? withoutSuffix(model) : model;
                id = stripDate ? withoutDate(id) : id;
                id = stripProvider ? withoutProvider(id) : id;
                const auto found = m_models.find(id);
                const auto alias = m_aliases.find(id);
                if (found != m_models.end() || alias != m_aliases.end()) {
                    return found != m_models.end() ? found : m_models.find(alias->second);
                }
            }
        }
    }
    return m_models.end();
}

std::uint64_t PriceTable::hash() const
{
    PackedWriter writer;
    const auto putRate = [&writer](Rate rate) {
        writer.signedNumber(rate.picodollars.value_or(-1));
        writer.number(rate.isAssumed ? 1 : 0);
    };
    const auto putRates = [&putRate](const Rates &rates) {
        for (const Rate rate :
            {rates.input, rates.output, rates.shortWrite, rates.longWrite, rates.read}) {
            putRate(rate);
        }
    };
    for (const auto &[id, model] : m_models) {
        writer.text(id);
        writer.signedNumber(model.fastThousandths.value_or(-1));
        for (const PriceRow &row : model.rows) {
            writer.signedNumber(row.validFrom.time_since_epoch().count());
            putRates(row.rates);
            writer.number(row.longPrompt ? row.longPrompt->above + 1 : 0);
            putRates(row.longPrompt.value_or(LongPrompt {}).rates);
        }
        writer.text({});
    }
    for (const auto &[alias, id] : m_aliases) {
        writer.text(alias);
        writer.text(id);
    }
    return hashOf(writer.bytes());
}

void PriceTable::set(const std::string &model, ModelPrices prices)
{
    std::stable_sort(prices.rows.begin(), prices.rows.end(),
        [](const PriceRow &a, const PriceRow &b) { return a.validFrom < b.validFrom; });
    for (const std::string &alias : prices.aliases) {
        m_aliases[alias] = model;
    }
    m_models[model] = std::move(prices);
}

void PriceTable::override(const PriceTable &other)
{
    for (const auto &[model, prices] : other.m_models) {
        ModelPrices merged = prices;
        if (const auto own = m_models.find(model);
            own != m_models.end() && !merged.fastThousandths) {
            merged.fastThousandths = own->second.fastThousandths;
        }
        set(model, std::move(merged));
    }
}

} // namespace usage
