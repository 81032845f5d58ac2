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
    const Usage input {.input = million};
    const Usage read {.cacheRead = million};
    const Usage shortPrompt {.output = million, .cacheRead = 60'000, .cacheCreation = 40'000};
    Usage longPrompt = shortPrompt;
    longPrompt.input = 1;
    const struct {
        const char *model;
        Usage usage;
        std::optional<double> dollars;
        const char *time = "2026-11-20T00:00:00Z";
        Speed speed = Speed::Standard;
        ServiceTier tier = ServiceTier::Standard;
    } rows[] = {
        {"claude-opus-5-5", all, 37.2},
        {.model = "claude-opus-5-5", .usage = all, .dollars = 74.4, .speed = Speed::Fast},
        {.model = "claude-opus-5-5", .usage = all, .dollars = 18.6, .tier = ServiceTier::Batch},
        {.model = "claude-opus-5-5", .usage = all, .dollars = {}, .speed = Speed::Other},
        // Rows begin at midnight in UTC.
        {"claude-fable-5-2", all, {}, "2026-11-08T23:59:59.999Z"},
        {"claude-fable-5-2", input, 8, "2026-11-09T00:00:00Z"},
        {"claude-sonnet-5-5", read, 0.2, "2026-10-06T23:59:59.999Z"},
        {"claude-sonnet-5-5", read, 0.1, "2026-10-07T00:00:00Z"},
        // A prompt of 100,000 tokens and one of one more.
        {"claude-haiku-5-5", shortPrompt, 0.5056},
        {"claude-haiku-5-5", longPrompt, 2.5280005},
        // Writes that no lifetime is told for are short ones; a total below its parts is ignored.
        {"claude-opus-5-5", {.cacheCreation = 3 * million, .oneHour = million}, 18},
        {"claude-opus-5-5", {.cacheCreation = 1, .fiveMinutes = million, .oneHour = million}, 13},
        // Codex: long prompts, writes without a price, and a promotion that may have ended.
        {"gpt-6.2-sol", {.input = 272'000, .output = million}, 10.544},
        {"gpt-6.2-sol", {.input = 172'001, .cacheRead = 100'000}, 0.708004},
        {"gpt-5.5", {.input = 1}, 0.000005},
        {"gpt-5.5", {.input = 1, .cacheCreation = 1}, {}},
        {.model = "gpt-5.4", .usage = {.input = 1}, .dollars = 0.000005, .speed = Speed::Fast},
        {.model = "gpt-5.2", .usage = {.input = 1}, .dollars = {}, .speed = Speed::Fast},
        {"gpt-5.6-sol", input, 8, "2026-11-21T23:59:59Z"},
        {"gpt-5.6-sol", input, {}, "2026-11-22T00:00:00Z"},
        // Names.
        {"anthropic/claude-haiku-4-5-20251001[1m]", input, 1},
        {"claude-opus-5-5-x", input, {}},
        {"", input, {}},
    };
    const PriceTable prices = builtInPrices();
    for (const auto &row : rows) {
        const auto cost = prices.price(
            {row.model, parseMoment(row.time).value(), row.usage, row.speed, row.tier});
        ASSERT_EQ(cost.has_value(), row.dollars.has_value()) << row.model << ' ' << row.time;
        if (cost) {
            // To the millionth.
            EXPECT_NEAR(cost->cost.dollars(), *row.dollars, 0.51e-6)
                << row.model << ' ' << row.time;
        }
    }
}

TEST(Prices, ofSeveralRequestsTakeNoneForLong)
{
    const auto price = builtInPrices().price(
        {.model = "gpt-6.2-sol", .time = testNow(), .usage = {.input = million}, .isSum = true});
    ASSERT_TRUE(price);
    EXPECT_EQ(price->cost.dollars(), 2);
    EXPECT_TRUE(price->isEstimated);
}

TEST(Prices, areExactInAnySum)
{
    Money sum;
    for (int i = 0; i < 1'000'000; ++i) {
        sum += Money(100'000); // a ten-millionth
    }
    EXPECT_EQ(sum, Money(100'000'000'000));
    EXPECT_EQ(sum.dollars(), 0.1);
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
        return cost ? std::optional(cost->cost.dollars()) : std::nullopt;
    };
    // The built-in rows of a listed model are gone, but not what fast mode multiplies with.
    EXPECT_EQ(dollars("claude-opus-5-5", "2026-11-20T23:59:59Z"), std::nullopt);
    EXPECT_EQ(dollars("claude-opus-5-5", "2026-11-21T00:00:00Z"), 2);
    EXPECT_EQ(dollars("mine", "2026-11-21T00:00:00Z"), 0.000003);
    EXPECT_EQ(dollars("claude-opus-5", "2026-11-21T00:00:00Z"), 10);
}

TEST(Prices, inABadFileAreNotUsed)
{
    const auto model = [](const std::string &value) { return R"({"models":{"m":)" + value + "}}"; };
    const auto price = [&model](const std::string &fields) {
        return model(R"({"prices":[{)" + fields + "}]}");
    };
    const std::string whole = R"("input":1,"output":1,"write5m":1,"write1h":1,"read":1)";
    const std::pair<std::string, std::string> rows[] = {{"", "not JSON"},
        {R"({"models":{},"model":{}})", "unknown key model in the file"},
        {model("5"), "model \"m\": must be an object"},
        {model(R"({"prices":[]})"), "model \"m\": \"prices\" must not be empty"},
        {model(R"({"prices":[5],"fast":-1})"), "unknown key fast in model \"m\""},
        {model(R"({"prices":[{)" + whole + R"(}],"fastMultiplier":-1})"),
            "\"fastMultiplier\" must"},
        {price(R"("valid_from":"2026-11-20")"), "unknown key valid_from"},
        {price(R"("validFrom":"11/20/2026","input":1)"), "\"validFrom\" must be a date"},
        {price(R"("input":1)"), "model \"m\" price 1: \"output\" must be a number"},
        {price(R"("input":-1)"), "\"input\" must be a number from 0 to 10000"},
        {price(R"("input":10001)"), "\"input\" must be"},
        {price(whole + R"(,"longPrompt":{"over":1})"), "unknown key over in model"},
        {std::string(std::size_t {5} << 20U, ' '), "too large"}};
    const Scratch scratch;
    for (const auto &[text, problem] : rows) {
        const LoadedPrices prices = loadPrices(scratch.write("prices.json", text));
        EXPECT_NE(prices.problem.find(problem), std::string::npos)
            << problem << ": " << prices.problem;
        EXPECT_TRUE(
            prices.table.price({.model = "claude-opus-5-5", .time = testNow(), .usage = all}));
        EXPECT_FALSE(prices.table.price({.model = "m", .time = testNow(), .usage = all}));
    }
    EXPECT_EQ(loadPrices(scratch.root()).problem, "not a regular file");
    EXPECT_EQ(loadPrices(scratch.root() / "none.json").problem, "");
}

} // namespace
