// A user's own price list.

#include "require.h"
#include "usage/pricing/PriceFile.h"

#include <limits>
#include <nlohmann/json.hpp>

using namespace usage;

namespace {

/// Tokens of any kind cost no less than nothing, at any speed.
void lookAt(const PriceTable &table, const std::string &model)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max();
    constexpr Usage usages[] = {{.input = most}, {.output = most}, {.cacheRead = most},
        {.cacheCreation = most}, {.oneHour = most}, {most, most, most, most, most, most}};
    for (const auto speed : {Speed::Standard, Speed::Fast}) {
        for (const auto tier : {ServiceTier::Standard, ServiceTier::Batch}) {
            PricedRequest request {.model = model, .usage = {}, .speed = speed, .tier = tier};
            const auto nothing = table.price(request);
            require(!nothing || nothing->cost == Money());
            for (const Usage &usage : usages) {
                request.usage = usage;
                const auto much = table.price(request);
                require(!much || (nothing && much->cost.picodollars() >= 0));
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    static const PriceTable builtIn = builtInPrices();
    const std::string_view text(data, size);
    auto parsed = parsePrices(text);
    if (const auto *error = std::get_if<PriceFileError>(&parsed)) {
        require(!error->text.empty() && !nlohmann::json(error->text).dump().empty());
        return 0;
    }
    const auto &table = std::get<PriceTable>(parsed);
    require(table.hash() == std::get<PriceTable>(parsePrices(text)).hash());
    PriceTable both = builtIn;
    both.override(table);
    const std::uint64_t once = both.hash();
    both.override(table);
    require(both.hash() == once);
    const auto document = nlohmann::json::parse(text);
    for (const auto &[model, entry] : document.at("models").items()) {
        lookAt(table, model);
        lookAt(both, model);
    }
    return 0;
}
