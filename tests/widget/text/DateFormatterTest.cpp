#include "widget/text/DateFormatter.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono;

TEST(DateFormatter, writesTheFieldsOfAPattern)
{
    const TimePoint afternoon = sys_days(2026y / March / 5) + 16h + 5min + 9s; // 17:05 in Berlin
    const TimePoint midnight = afternoon + 6h + 55min;
    const struct {
        const char *culture, *pattern, *text;
        TimePoint moment;
    } rows[] = {{"en-US", "y yy yyyyy M MM d dd", "2026 26 02026 3 03 5 05", afternoon},
        {"en-US", "H HH h hh m mm mmm s ss a", "17 17 5 05 5 05 005 9 09 PM", afternoon},
        {"en-US", "d H h:mm a", "6 0 12:00 AM", midnight},
        {"en-US", "d H h:mm aaa", "6 12 12:00 PM", midnight + 12h},
        {"en-US", "EEEE EEE E EEEEE MMMM MMM MMMMM", "Thursday Thu Thu T March Mar M", afternoon},
        // The week begins on a Sunday in America, on a Monday in Germany.
        {"en-US", "c ccc cccc", "5 Thu Thursday", afternoon},
        {"de-DE", "c ccc cccc L LLL LLLL", "4 Do Donnerstag 3 Mär März", afternoon},
        {"pl-PL", "LLLL, d MMMM", "marzec, 5 marca", afternoon},
        {"fr-FR", "EEE d LLL", "jeu. 5 mars", afternoon},
        {"tr-TR", "d MMMM cccc", "5 Mart Perşembe", afternoon},
        {"ja-JP", "M月d日 EEEE ah時", "3月5日 木曜日 午後5時", afternoon},
        {"ar-EG", "d MMM yyyy", "٥ مارس ٢٠٢٦", afternoon}, {"ccp", "dd", "𑄶𑄻", afternoon},
        // A field that we do not write stands as it is, and so does what is quoted.
        {"en-US", "QQQ yyyy d n", "QQQ 2026 5 n", afternoon},
        {"en-US", "'o''clock' ''d'' 'd", "o'clock '5' d", afternoon},
        {"en-US", "d'.'d", "5.5", afternoon}};
    for (const auto &[culture, pattern, text, moment] : rows) {
        const DateFormatter format {QString::fromUtf8(culture), QString::fromUtf8(pattern)};
        EXPECT_EQ(format(moment).toStdString(), text) << culture << ' ' << pattern;
    }
}

} // namespace
