#include "widget/text/modelName.h"
#include "widget/text/Strings.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

using Rows = std::initializer_list<std::pair<double, const char *>>;

TEST(Formatting, shortensTokens)
{
    for (const auto &[count, text] :
        Rows {{0, "0"}, {0.5, "1"}, {999.5, "1000"}, {1000, "1k"}, {1499, "1k"}, {2500, "3k"},
            {999'600, "1000k"}, {1e6, "1.0M"}, {1'250'000, "1.3M"}, {999'999'999, "1000.0M"},
            {1e9, "1.0B"}, {-0.4, "0"}, {-5000, "-5000"}, {notANumber, "0"}, {infinity, "0"}}) {
        EXPECT_EQ(Strings::tokens(count).toStdString(), text) << count;
    }
}

TEST(Formatting, writesMoney)
{
    const Strings english(u"en"_qs, {});
    // A tie of the exact value goes to the even cent.
    for (const auto &[amount, text] : Rows {{0, "$0.00"}, {0.125, "$0.12"}, {0.375, "$0.38"},
             {99.994, "$99.99"}, {99.999, "$100.00"}, {100, "$100"}, {100.5, "$101"},
             {999.5, "$1,000"}, {1e6, "$1,000,000"}, {-0.001, "$-0.00"}, {-1234.5, "$-1,234.50"},
             {notANumber, "$0.00"}, {-infinity, "$0.00"}}) {
        EXPECT_EQ(english.money(amount).toStdString(), text) << amount;
    }
    EXPECT_TRUE(english.money(-std::numeric_limits<double>::max()).endsWith(u",368.00"));
    EXPECT_EQ(Strings(u"ru"_qs, {}).money(3.5), u"$3,50");
    EXPECT_EQ(Strings(u"uk"_qs, {}).money(1'234'567), u"$1.234.567");
    EXPECT_EQ(Strings(u"de"_qs, {}).money(1234.4), u"$1,234");
}

TEST(Formatting, roundsSpansUpToTheBegunMinute)
{
    const Texts texts {{u"spanDH"_qs, u"{0}d {1}h"_qs}, {u"spanHM"_qs, u"{0}h {1}m"_qs},
        {u"spanM"_qs, u"{0}m"_qs}};
    const Strings strings(u"en"_qs, {{u"en"_qs, texts}});
    for (const auto &[seconds, text] :
        Rows {{0, "0m"}, {1, "1m"}, {60, "1m"}, {60.5, "2m"}, {3540, "59m"}, {3541, "1h 0m"},
            {3601, "1h 1m"}, {86'340, "23h 59m"}, {86'399, "1d 0h"}, {288'000, "3d 8h"},
            {-3600, "0m"}, {notANumber, "0m"}, {infinity, "0m"}, {1e300, "694444444444d 10h"}}) {
        EXPECT_EQ(strings.span(Seconds(seconds)).toStdString(), text);
    }
}

TEST(Formatting, readsModelNamesFromIdentifiers)
{
    const std::pair<const char *, const char *> rows[] = {{"claude-opus-4-1", "Opus 4.1"},
        {"claude-sonnet-4-5-20250929", "Sonnet 4.5.20250929"}, {"claude-OPUS--4-", "Opus 4"},
        {"claude-claude-2", "Claude 2"}, {"gpt-5-codex", "GPT-5-codex"}, {"GPT-5", "Gpt 5"},
        {"o4-mini", "o4-mini"}, {"o-series", "O series"}, {"o", "O"},
        {"two words-1", "Two Words 1"}, {" claude-x", "Claude x"}, {"émile-1", "Émile 1"},
        {"claude-", "claude-"}, {"--", "--"}, {"", ""}};
    for (const auto &[id, name] : rows) {
        EXPECT_EQ(modelName(QString::fromUtf8(id)).toStdString(), name) << id;
    }
}

} // namespace
