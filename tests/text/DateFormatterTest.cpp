#include "text/DateFormatter.h"

#include <gtest/gtest.h>
#include <QDateTime>
#include <unicode/smpdtfmt.h>

namespace {

using namespace std::chrono;

std::string byIcu(const QString &culture, const QString &pattern, TimePoint moment)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(
        icu::UnicodeString(QStringView(pattern).utf16(), static_cast<int>(pattern.size())),
        icu::Locale::createFromName(culture.toLatin1().constData()), status);
    const qint64 milliseconds = moment.time_since_epoch().count();
    const int offset = QDateTime::fromMSecsSinceEpoch(milliseconds).offsetFromUtc();
    format.setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString text;
    std::string bytes;
    format.format(static_cast<UDate>(milliseconds) + 1000.0 * offset, text, nullptr, status);
    return text.toUTF8String(bytes);
}

/// Two libraries know the names; both have them from one source, though not of the same year.
TEST(DateFormatter, writesUsualFieldsAsIcuDoes)
{
    for (const char *culture : {"en-US", "ru-RU", "de-DE", "fr-FR", "es-ES", "pt-BR", "pl-PL",
             "uk-UA", "ja-JP", "zh-Hans-CN", "tr-TR", "hi-IN", "ar-EG"}) {
        for (const char *pattern : {"d MMM", "LLL", "LLLL yyyy", "EEEE, d. MMMM", "EEE HH:mm", "y",
                 "yy M d L dd MM LL H", "'o''clock' s ss m", "''d'' 'd", "d'.'d", "E EE"}) {
            const DateFormatter format {QLatin1String(culture), QLatin1String(pattern)};
            for (int month = 1; month <= 12; ++month) {
                const TimePoint moment = sys_days(2026y / month / (month + 4)) + 8h + 7min + 6s;
                EXPECT_EQ(format(moment).toStdString(),
                    byIcu(QLatin1String(culture), QLatin1String(pattern), moment))
                    << culture << ' ' << pattern;
            }
        }
    }
}

TEST(DateFormatter, leavesUnusualFieldsToIcu)
{
    const TimePoint moment = sys_days(2026y / March / 5) + 16h + 5min; // 17:05 in Berlin
    const std::pair<const char *, const char *> rows[] = {{"h:mm a", "5:05 PM"}, {"EEEEE", "T"},
        {"QQQ yyyy", "Q1 2026"}, {"MMMMM d", "M 5"}, {"d n", ""}, {"mmm", "005"}};
    for (const auto &[pattern, text] : rows) {
        const DateFormatter format {u"en-US"_qs, QLatin1String(pattern)};
        EXPECT_EQ(format(moment).toStdString(), text) << pattern;
    }
}

} // namespace
