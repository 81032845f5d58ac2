#include "usage/pricing/PriceFile.h"

#include "usage/files/SafeFile.h"
#include "usage/pricing/BuiltInPrices.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace usage {

namespace {

using nlohmann::json;

constexpr double picoPerUnit = 1e6; // picodollars per token in a dollar per million tokens
constexpr double highestRate = 10'000;
constexpr double highestFactor = 100;
constexpr double thousandths = 1000;
constexpr std::size_t largestFile = std::size_t {4} << 20U;

/// Reads values and remembers the first thing that is wrong, with the place it is at.
class Reader final {
public:
    [[nodiscard]] const std::string &problem() const { return m_problem; }

    void fail(const std::string &place, std::string_view what)
    {
        if (m_problem.empty()) {
            m_problem = fmt::format("{}: {}", place, what);
        }
    }

    /// Fails when an object has keys beside `keys` that are no remarks: a key that is misspelt
    /// would silently tell nothing.
    void knownKeys(
        const json &object, std::initializer_list<std::string_view> keys, const std::string &place)
    {
        constexpr std::array<std::string_view, 4> remarks {
            "about", "source", "confidence", "fastSource"};
        for (const auto &[key, value] : object.items()) {
            if (m_problem.empty() && std::find(keys.begin(), keys.end(), key) == keys.end()
                && std::find(remarks.begin(), remarks.end(), key) == remarks.end()) {
                m_problem = fmt::format("unknown key {} in {}", key, place);
            }
        }
    }

    double number(
        const json &object, std::string_view key, double highest, const std::string &place)
    {
        const auto found = object.find(key);
        const double value =
            found != object.end() && found->is_number() ? found->get<double>() : NAN;
        // Written so that "not a number" fails as well.
        if (!(value >= 0 && value <= highest)) {
            fail(place, fmt::format("\"{}\" must be a number from 0 to {}", key, highest));
            return 0;
        }
        return value;
    }

    /// The texts of a list, which has to hold nothing else; of `known` ones only, if there are any.
    std::vector<std::string> texts(const json &object, std::string_view key,
        const std::string &place, std::initializer_list<std::string_view> known = {})
    {
        std::vector<std::string> result;
        const auto found = object.find(key);
        if (found == object.end()) {
            return result;
        }
        const bool isList = found->is_array()
            && std::all_of(
                found->begin(), found->end(), [](const json &each) { return each.is_string(); });
        result = isList ? found->get<std::vector<std::string>>() : result;
        const bool isKnown = known.size() == 0
            || std::all_of(result.begin(), result.end(), [&known](const std::string &each) {
                   return std::find(known.begin(), known.end(), each) != known.end();
               });
        if (!isList || !isKnown) {
            fail(place,
                fmt::format(
                    "\"{}\" must be a list of names{}", key, known.size() == 0 ? "" : " of rates"));
        }
        return result;
    }

    Rates rates(
        const json &object, const std::string &place, const std::vector<std::string> &assumed)
    {
        const auto rate = [&](std::string_view key) -> Rate {
            const auto found = object.find(key);
            if (found != object.end() && found->is_null()) {
                return {};
            }
            return {std::llround(number(object, key, highestRate, place) * picoPerUnit),
                std::find(assumed.begin(), assumed.end(), key) != assumed.end()};
        };
        return {.input = rate("input"),
            .output = rate("output"),
            .shortWrite = rate("write5m"),
            .longWrite = rate("write1h"),
            .read = rate("read")};
    }

    PriceRow row(const json &object, const std::string &place);
    ModelPrices model(const json &object, const std::string &place);
    PriceTable table(const json &document);

private:
    std::string m_problem;
};

PriceRow Reader::row(const json &object, const std::string &place)
{
    PriceRow row;
    if (!object.is_object()) {
        fail(place, "a price must be an object");
        return row;
    }
    knownKeys(object,
        {"validFrom", "input", "output", "write5m", "write1h", "read", "longPrompt", "assumed"},
        place);
    if (const auto from = object.find("validFrom"); from != object.end() && !from->is_null()) {
        const auto date = from->is_string()
            ? TimeStamp::parseDate(from->get_ref<const std::string &>())
            : std::nullopt;
        if (!date) {
            fail(place, "\"validFrom\" must be a date like \"2026-11-20\"");
        }
        row.validFrom = date.value_or(row.validFrom);
    }
    const auto assumed =
        texts(object, "assumed", place, {"input", "output", "write5m", "write1h", "read"});
    row.rates = rates(object, place, assumed);
    if (const auto longer = object.find("longPrompt"); longer != object.end()) {
        const std::string inner = place + " longPrompt";
        if (!longer->is_object()) {
            fail(inner, "must be an object");
            return row;
        }
        knownKeys(*longer, {"above", "input", "output", "write5m", "write1h", "read"}, inner);
        constexpr double longest = 1e9;
        row.longPrompt =
            LongPrompt {static_cast<std::uint64_t>(number(*longer, "above", longest, inner)),
                rates(*longer, inner, assumed)};
    }
    return row;
}

ModelPrices Reader::model(const json &object, const std::string &place)
{
    ModelPrices model;
    const auto rows = object.is_object() ? object.find("prices") : object.end();
    if (!object.is_object() || rows == object.end() || !rows->is_array()) {
        fail(place, "must be an object with a list \"prices\"");
        return model;
    }
    knownKeys(object, {"prices", "fastMultiplier", "aliases"}, place);
    if (rows->empty()) {
        fail(place, "\"prices\" must not be empty");
    }
    for (const json &entry : *rows) {
        model.rows.push_back(row(entry, fmt::format("{} price {}", place, model.rows.size() + 1)));
    }
    if (object.contains("fastMultiplier")) {
        model.fastThousandths =
            std::llround(number(object, "fastMultiplier", highestFactor, place) * thousandths);
    }
    model.aliases = texts(object, "aliases", place);
    return model;
}

PriceTable Reader::table(const json &document)
{
    PriceTable table;
    const auto models = document.is_object() ? document.find("models") : document.end();
    if (!document.is_object() || models == document.end() || !models->is_object()) {
        fail("the file", "must be an object with an object \"models\"");
        return table;
    }
    knownKeys(document, {"models"}, "the file");
    for (const auto &[id, entry] : models->items()) {
        table.set(id, model(entry, fmt::format("model \"{}\"", id)));
    }
    return table;
}

} // namespace

std::variant<PriceTable, PriceFileError> parsePrices(std::string_view text)
{
    const json document = json::parse(text, nullptr, false);
    if (document.is_discarded()) {
        return PriceFileError {"not JSON"};
    }
    Reader reader;
    PriceTable table = reader.table(document);
    if (!reader.problem().empty()) {
        return PriceFileError {reader.problem()};
    }
    return table;
}

PriceTable builtInPrices()
{
    auto parsed = parsePrices(builtInPricesJson);
    auto *table = std::get_if<PriceTable>(&parsed);
    return table != nullptr ? std::move(*table) : PriceTable {};
}

LoadedPrices loadPrices(const std::filesystem::path &file)
{
    LoadedPrices prices {builtInPrices(), {}};
    const FileContent content = readFile(file, largestFile);
    if (content.isMissing) {
        return prices;
    }
    if (!content.bytes) {
        prices.problem = content.problem;
        return prices;
    }
    auto parsed = parsePrices(*content.bytes);
    if (const auto *error = std::get_if<PriceFileError>(&parsed)) {
        prices.problem = error->text;
    } else {
        prices.table.override(std::get<PriceTable>(parsed));
    }
    return prices;
}

} // namespace usage
