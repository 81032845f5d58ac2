#include "indexer/PriceFile.h"
#include "indexer/Scratch.h"

#include <gtest/gtest.h>

namespace {

using namespace indexer;

constexpr std::uint64_t million = 1'000'000;

/// A million of everything: input, output, five-minute writes, hour writes, reads.
const Usage all {million, million, million, 2 * million, million, million};

TEST(Prices, followModelTimeSizeAndSpeed)
{
    const char *const lately = "2026-11-20T00:00:00Z";
    const Usage inputOnly {.input = million};
    const Usage readOnly {.cacheRead = million};
    const Usage longPrompt {
        .input = 1, .output = million, .cacheRead = 60'000, .cacheCreation = 40'000};
    const Usage shorter {.output = million, .cacheRead = 60'000, .cacheCreation = 40'000};
    const struct {
        const char *model;
        const char *time;
        Usage usage;
        Speed speed;
        ServiceTier tier;
        std::optional<double> dollars;
    } rows[] = {
        {"claude-opus-5-5", lately, all, Speed::Standard, ServiceTier::Standard, 37.2},
        {"claude-opus-5-5", lately, all, Speed::Fast, ServiceTier::Standard, 74.4},
        {"claude-opus-5-5", lately, all, Speed::Standard, ServiceTier::Batch, 18.6},
        {"claude-opus-5-5", lately, all, Speed::Fast, ServiceTier::Batch, 37.2},
        {"claude-opus-5-5", lately, all, Speed::Standard, ServiceTier::Other, {}},
        {"claude-opus-5-5", lately, all, Speed::Other, ServiceTier::Standard, {}},
        {"claude-opus-4-6", lately, inputOnly, Speed::Fast, ServiceTier::Standard, 30},
        {"claude-fable-5-2", lately, inputOnly, Speed::Fast, ServiceTier::Standard, {}},
        {"claude-fable-5-2", lately, inputOnly, Speed::Standard, ServiceTier::Standard, 8},
        // Rows begin at midnight in UTC.
        {"claude-fable-5-2", "2026-11-08T23:59:59.999Z", all, Speed::Standard,
            ServiceTier::Standard, {}},
        {"claude-fable-5-2", "2026-11-09T00:00:00Z", inputOnly, Speed::Standard,
            ServiceTier::Standard, 8},
        {"claude-sonnet-5-5", "2026-10-06T23:59:59.999Z", readOnly, Speed::Standard,
            ServiceTier::Standard, 0.2},
        {"claude-sonnet-5-5", "2026-10-07T00:00:00Z", readOnly, Speed::Standard,
            ServiceTier::Standard, 0.1},
        {"claude-haiku-3-5", "2001-01-01T00:00:00Z", all, Speed::Standard, ServiceTier::Standard,
            7.48},
        // A prompt of 100,000 tokens and one of one more.
        {"claude-haiku-5-5", lately, shorter, Speed::Standard, ServiceTier::Standard, 0.5056},
        {"claude-haiku-5-5", lately, longPrompt, Speed::Standard, ServiceTier::Standard, 2.5280005},
        // Writes that no lifetime is told for are short ones; a total below its parts is ignored.
        {"claude-opus-5-5", lately, {.cacheCreation = 3 * million, .oneHour = million},
            Speed::Standard, ServiceTier::Standard, 18},
        {"claude-opus-5-5", lately,
            {.cacheCreation = 1, .fiveMinutes = million, .oneHour = million}, Speed::Standard,
            ServiceTier::Standard, 13},
        // Names.
        {"claude-opus-5-5[1m]", lately, inputOnly, Speed::Standard, ServiceTier::Standard, 4},
        {"claude-haiku-4-5-20251001", lately, inputOnly, Speed::Standard, ServiceTier::Standard, 1},
        {"anthropic/claude-haiku-4-5-20251001[1m]", lately, inputOnly, Speed::Standard,
            ServiceTier::Standard, 1},
        {"claude-opus-5-5-x", lately, inputOnly, Speed::Standard, ServiceTier::Standard, {}},
        {"claude-opus-5-5-2025100", lately, inputOnly, Speed::Standard, ServiceTier::Standard, {}},
        {"claude-opus", lately, inputOnly, Speed::Standard, ServiceTier::Standard, {}},
        {"-20251001", lately, inputOnly, Speed::Standard, ServiceTier::Standard, {}},
        {"", lately, inputOnly, Speed::Standard, ServiceTier::Standard, {}},
    };
    const PriceTable prices = builtInPrices();
    for (const auto &row : rows) {
        const auto cost = prices.price(
            {row.model, parseMoment(row.time).value(), row.usage, row.speed, row.tier});
        ASSERT_EQ(cost.has_value(), row.dollars.has_value()) << row.model << ' ' << row.time;
        if (cost) {
            // To the millionth.
            EXPECT_NEAR(cost->dollars(), *row.dollars, 0.51e-6) << row.model << ' ' << row.time;
        }
    }
}

TEST(Prices, coverTheModelsOfToday)
{
    const PriceTable prices = builtInPrices();
    for (const char *model : {"claude-fable-5-2", "claude-fable-5-1", "claude-mythos-5-1",
             "claude-fable-5", "claude-mythos-5", "claude-opus-5-5", "claude-opus-5",
             "claude-opus-4-8", "claude-opus-4-7", "claude-opus-4-6", "claude-opus-4-5",
             "claude-opus-4-1", "claude-opus-4", "claude-sonnet-5-5", "claude-sonnet-5",
             "claude-sonnet-4-6", "claude-sonnet-4-5", "claude-sonnet-4", "claude-haiku-5-5",
             "claude-haiku-4-5", "claude-haiku-3-5"}) {
        EXPECT_TRUE(prices.price({.model = model, .time = testNow(), .usage = all})) << model;
    }
}

TEST(Prices, areExactInAnySum)
{
    Money sum;
    for (int i = 0; i < 1'000'000; ++i) {
        sum += Money(100'000); // a ten-millionth
    }
    EXPECT_EQ(sum, Money(100'000'000'000));
    EXPECT_EQ(sum.dollars(), 0.1);
    EXPECT_EQ(Money(300'000'000'000).dollars(), 0.3);
    EXPECT_EQ(Money(499'999).dollars(), 0.0);
    EXPECT_EQ(Money(500'000).dollars(), 0.000001);
}

TEST(Prices, canBeReplacedModelByModel)
{
    const Scratch scratch;
    const auto file = scratch.write("prices.json",
        R"({"models":{"claude-opus-5-5":{"prices":[{"validFrom":"2026-11-21","input":1,"output":2,)"
        R"("write5m":3,"write1h":4,"read":5}]},"mine":{"fastMultiplier":3,"prices":[)"
        R"({"input":0.000001,"output":0,"write5m":0,"write1h":0,"read":0}]}}})");
    const LoadedPrices prices = loadPrices(file);
    EXPECT_EQ(prices.problem, "");
    const auto dollars = [&](const char *model, const char *time) -> std::optional<double> {
        const auto cost = prices.table.price({.model = model,
            .time = parseMoment(time).value(),
            .usage = {.input = million},
            .speed = Speed::Fast});
        return cost ? std::optional(cost->dollars()) : std::nullopt;
    };
    // The built-in rows of a listed model are gone, but not what fast mode multiplies with.
    EXPECT_EQ(dollars("claude-opus-5-5", "2026-11-20T23:59:59Z"), std::nullopt);
    EXPECT_EQ(dollars("claude-opus-5-5", "2026-11-21T00:00:00Z"), 2);
    EXPECT_EQ(dollars("mine", "2026-11-21T00:00:00Z"), 0.000003);
    EXPECT_EQ(dollars("claude-opus-5", "2026-11-21T00:00:00Z"), 10);
}

TEST(Prices, inABadFileAreNotUsed)
{
    const auto file = [](const std::string &row) {
        return R"({"models":{"m":{"prices":[)" + row + "]}}}";
    };
    const struct {
        std::string text;
        std::string problem; // a part of it
    } rows[] = {
        {"", "not JSON"},
        {"{", "not JSON"},
        {"[]", "the file: must be an object"},
        {R"({"models":[]})", "the file: must be an object"},
        {R"({"models":{"m":5}})", "model \"m\": must be an object"},
        {R"({"models":{"m":{"prices":{}}}})", "model \"m\": must be an object"},
        {R"({"models":{"m":{"prices":[]}}})", "model \"m\": \"prices\" must not be empty"},
        {R"({"models":{"m":{"prices":[5],"fast":-1}}})", "unknown key fast in model \"m\""},
        {R"({"models":{},"model":{}})", "unknown key model in the file"},
        {file(R"({"valid_from":"2026-11-20"})"), "unknown key valid_from in model \"m\" price 1"},
        {file(R"({"input":1,"output":1,"write5m":1,"write1h":1,"read":1,"longPrompt":{"over":1}})"),
            "unknown key over in model \"m\" price 1 longPrompt"},
        {R"({"models":{"m":{"prices":[{"input":1,"output":1,"write5m":1,"write1h":1,"read":1,)"
         R"("source":"x"}],"fastMultiplier":-1}}})",
            "model \"m\": \"fastMultiplier\" must be"},
        {file("5"), "model \"m\" price 1: a price must be an object"},
        {file(R"({"input":1})"), "model \"m\" price 1: \"output\" must be a number"},
        {file(R"({"input":"1"})"), "\"input\" must be a number from 0 to 10000"},
        {file(R"({"input":-1})"), "\"input\" must be"},
        {file(R"({"input":1e999})"), "not JSON"},
        {file(R"({"input":10001})"), "\"input\" must be"},
        {file(R"({"validFrom":"11/20/2026","input":1})"), "\"validFrom\" must be a date"},
        {file(R"({"input":1,"output":1,"write5m":1,"write1h":1,"read":1,"longPrompt":1})"),
            "longPrompt: must be an object"},
        {std::string(std::size_t {5} << 20U, ' '), "too large"},
    };
    for (const auto &row : rows) {
        const Scratch scratch;
        const LoadedPrices prices = loadPrices(scratch.write("prices.json", row.text));
        EXPECT_NE(prices.problem.find(row.problem), std::string::npos)
            << row.text.substr(0, 100) << ": " << prices.problem;
        EXPECT_TRUE(
            prices.table.price({.model = "claude-opus-5-5", .time = testNow(), .usage = all}));
        EXPECT_FALSE(prices.table.price({.model = "m", .time = testNow(), .usage = all}));
    }
    const Scratch scratch;
    EXPECT_EQ(loadPrices(scratch.root()).problem, "not a regular file");
    EXPECT_EQ(loadPrices(scratch.root() / "none.json").problem, "");
}

} // namespace
