#include "usage/pricing/PriceFile.h"
#include "usage/Scratch.h"

#include <gtest/gtest.h>

namespace {

using namespace usage;

constexpr std::uint64_t million = 1'000'000;

/// A million of everything: input, output, five-minute writes, hour writes, reads.
const Usage all {million, million, million, 2 * million, million, million};

TEST(Prices, followModelTimeSizeAndSpeed)
{
    const Usage input {.input = million};
    const Usage read {.cacheRead = million};
    const Usage write {.cacheCreation = 100'000};
    const Usage longWrite {.input = 1, .cacheCreation = million};
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
        bool isAssumed = false;
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
        // Codex: long prompts, writes with and without a price, and rates that nobody stated.
        {"gpt-6.2-sol", {.input = 272'000, .output = million}, 10.544},
        {"gpt-6.2-sol", {.input = 172'001, .cacheRead = 100'000}, 0.708004},
        {"gpt-5.5", {.input = 1}, 0.000005},
        {"gpt-5.5", {.input = 1, .cacheCreation = 1}, {}},
        {.model = "gpt-5.4", .usage = {.input = 1}, .dollars = 0.000005, .speed = Speed::Fast},
        {.model = "gpt-5.2", .usage = {.input = 1}, .dollars = {}, .speed = Speed::Fast},
        {"gpt-6-astra", write, 1.25},
        {"gpt-6-astra", longWrite, 25.00002},
        {"gpt-6-luna", longWrite, 0.2500002},
        {"gpt-6.1-terra", longWrite, 2.500002},
        {"gpt-5.6-terra", write, 0.3125, "2026-07-29T23:59:59Z"},
        {"gpt-5.6-terra", {.output = million, .cacheRead = 272'001}, 18.1088004},
        {"gpt-5.6-luna", write, 0.125, "2026-07-29T23:59:59Z"},
        {"gpt-5.6-luna", longWrite, 0.5000004},
        {"gpt-5.6-sol", write, 0.5, "2026-11-21T23:59:59Z"},
        {.model = "gpt-5.6-sol",
            .usage = write,
            .dollars = 0.5,
            .time = "2026-11-22T00:00:00Z",
            .isAssumed = true},
        {.model = "gpt-5.6-codex-max", .usage = write, .dollars = 0.5, .isAssumed = true},
        {"gpt-6.2-astra", write, 1},
        {.model = "gpt-6.2-astra",
            .usage = {.cacheRead = 1},
            .dollars = 0.0000004,
            .isAssumed = true},
        {"gpt-5.1-codex-mini", read, 0.025},
        {"gpt-5.3-codex-spark", input, {}},
    };
    const PriceTable prices = builtInPrices();
    for (const auto &row : rows) {
        const auto cost = prices.price(
            {row.model, TimeStamp::parse(row.time).value(), row.usage, row.speed, row.tier});
        ASSERT_EQ(cost.has_value(), row.dollars.has_value()) << row.model << ' ' << row.time;
        if (cost) {
            // To the millionth.
            EXPECT_NEAR(cost->cost.dollars(), *row.dollars, 0.51e-6)
                << row.model << ' ' << row.time;
            EXPECT_EQ(cost->isAssumed, row.isAssumed) << row.model << ' ' << row.time;
        }
    }
}

TEST(Prices, areOfTheModelWhateverItsIdIsDressedIn)
{
    const PriceTable prices = builtInPrices();
    const std::pair<const char *, const char *> rows[] = {{"claude-opus-5[1m]", "claude-opus-5"},
        {"anthropic/claude-haiku-4-5-20251001[1m]", "claude-haiku-4-5"},
        {"openai/gpt-5.4-2026-03-05", "gpt-5.4"}, {"gpt-5.6-2026-06-01", "gpt-5.6-sol"},
        // A price that is the same makes no model the same, and a part of a name does not either.
        {"gpt-5.6-codex", "gpt-5.6-codex"}, {"gpt-5.4-2026-3-05", "gpt-5.4-2026-3-05"},
        {"x/claude-opus-5-5-x[1m]", "x/claude-opus-5-5-x[1m]"}, {"", ""}};
    for (const auto &[id, base] : rows) {
        EXPECT_EQ(prices.baseId(id), base);
        const auto price =
            prices.price({.model = id, .time = testNow(), .usage = {.input = million}});
        const auto ofBase =
            prices.price({.model = base, .time = testNow(), .usage = {.input = million}});
        EXPECT_EQ(price.has_value(), ofBase.has_value()) << id;
        EXPECT_TRUE(!price || price->cost == ofBase->cost) << id;
    }
}

TEST(Prices, ofSeveralRequestsTakeNoneForLong)
{
    const auto price = builtInPrices().price(
        {.model = "gpt-6.2-sol", .time = testNow(), .usage = {.input = million}, .isSum = true});
    ASSERT_TRUE(price);
    EXPECT_EQ(price->cost.dollars(), 2);
    EXPECT_TRUE(price->isTooLow);
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
            .time = TimeStamp::parse(time).value(),
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
        {price(whole + R"(,"assumed":["reads"])"), "\"assumed\" must be a list of names of rates"},
        {model(R"({"prices":[{)" + whole + R"(}],"aliases":["a",5]})"),
            "\"aliases\" must be a list"},
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
