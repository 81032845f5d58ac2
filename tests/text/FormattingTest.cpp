#include "text/Strings.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

TEST(Formatting, shortensTokens)
{
    const struct {
        double count;
        const char *text;
    } rows[] = {
        {0, "0"},
        {0.4, "0"},
        {0.5, "1"},
        {999, "999"},
        {999.5, "1000"},
        {1000, "1k"},
        {1499, "1k"},
        {1500, "2k"},
        {2500, "3k"},
        {999'600, "1000k"},
        {1e6, "1.0M"},
        {1'250'000, "1.3M"},
        {4'249'999, "4.2M"},
        {999'999'999, "1000.0M"},
        {1e9, "1.0B"},
        {1'250'000'000, "1.3B"},
        {1e15, "1000000.0B"},
        {-0.4, "0"},
        {-2.5, "-3"},
        {-5000, "-5000"},
        {notANumber, "0"},
        {infinity, "0"},
        {-infinity, "0"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Strings::tokens(row.count).toStdString(), row.text) << row.count;
    }
    EXPECT_TRUE(Strings::tokens(largest).endsWith(u".0B"));
    EXPECT_TRUE(Strings::tokens(-largest).startsWith(u"-1797"));
}

TEST(Formatting, writesMoney)
{
    const struct {
        double amount;
        const char *english;
        const char *russian;
    } rows[] = {
        {0, "$0.00", "$0,00"},
        {12.5, "$12.50", "$12,50"},
        {3.5, "$3.50", "$3,50"},
        {99.994, "$99.99", "$99,99"},
        {99.995, "$100.00", "$100,00"}, // the double lies just above
        {1.005, "$1.00", "$1,00"},      // and this one just below
        {99.999, "$100.00", "$100,00"},
        {100, "$100", "$100"},
        {100.5, "$101", "$101"},
        {102.5, "$103", "$103"},
        {999.5, "$1,000", "$1.000"},
        {1234.4, "$1,234", "$1.234"},
        {1'234'567, "$1,234,567", "$1.234.567"},
        {1e15, "$1,000,000,000,000,000", "$1.000.000.000.000.000"},
        // A tie of the exact value goes to the even cent.
        {0.125, "$0.12", "$0,12"},
        {0.375, "$0.38", "$0,38"},
        {-5, "$-5.00", "$-5,00"},
        {-0.001, "$-0.00", "$-0,00"},
        {-100.5, "$-100.50", "$-100,50"},
        {-1234.5, "$-1,234.50", "$-1.234,50"},
        {notANumber, "$0.00", "$0,00"},
        {infinity, "$0.00", "$0,00"},
        {-infinity, "$0.00", "$0,00"},
    };
    const Strings english(u"en"_qs, {});
    const Strings russian(u"ru"_qs, {});
    for (const auto &row : rows) {
        EXPECT_EQ(english.money(row.amount).toStdString(), row.english) << row.amount;
        EXPECT_EQ(russian.money(row.amount).toStdString(), row.russian) << row.amount;
    }
    EXPECT_EQ(Strings(u"uk"_qs, {}).money(1234.4), u"$1.234");
    EXPECT_EQ(Strings(u"de"_qs, {}).money(1234.4), u"$1,234");
    EXPECT_EQ(english.money(largest).size(), 1 + 309 + 102);
    EXPECT_TRUE(english.money(-largest).endsWith(u",368.00"));
}

TEST(Formatting, roundsSpansUpToTheBegunMinute)
{
    const Strings strings(u"en"_qs,
        {{u"en"_qs,
            {{u"spanDH"_qs, u"{0}d {1}h"_qs}, {u"spanHM"_qs, u"{0}h {1}m"_qs},
                {u"spanM"_qs, u"{0}m"_qs}}}});
    const struct {
        double seconds;
        const char *text;
    } rows[] = {
        {0, "0m"},
        {0.001, "1m"},
        {1, "1m"},
        {59, "1m"},
        {60, "1m"},
        {60.5, "2m"},
        {3540, "59m"},
        {3541, "1h 0m"},
        {3600, "1h 0m"},
        {3601, "1h 1m"},
        {86'340, "23h 59m"},
        {86'341, "1d 0h"},
        {86'399, "1d 0h"},
        {86'400, "1d 0h"},
        {288'000, "3d 8h"},
        {172'799, "2d 0h"},
        {-0.5, "0m"},
        {-3600, "0m"},
        {notANumber, "0m"},
        {infinity, "0m"},
        {-infinity, "0m"},
        {1e300, "694444444444d 10h"},
        {-1e300, "0m"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(strings.span(Strings::Seconds(row.seconds)).toStdString(), row.text)
            << row.seconds;
    }
    const Strings bare(u"en"_qs, {});
    EXPECT_EQ(bare.span(std::chrono::minutes(5)), u"spanM");
    EXPECT_EQ(bare.span(std::chrono::hours(5)), u"spanHM");
    EXPECT_EQ(bare.span(std::chrono::hours(50)), u"spanDH");
}

} // namespace
