#include "widget/sources/AppVersion.h"

#include <gtest/gtest.h>

namespace {

TEST(AppVersion, comesAfterAnother)
{
    const auto isNewer = [](const char *candidate, const char *base) {
        return AppVersion::isNewer(QString::fromUtf8(candidate), QString::fromUtf8(base));
    };
    const std::pair<const char *, const char *> newer[] = {{"1.4.0", "1.3.9"}, {"1.10", "1.9"},
        {"2", "1.99.99"}, {"1.2.0.1", "1.2"}, {" 1.5\r\n", "\t1.4 "}, {"4294967297", "4294967296"}};
    for (const auto &[candidate, base] : newer) {
        EXPECT_TRUE(isNewer(candidate, base) && !isNewer(base, candidate)) << candidate;
    }
    EXPECT_FALSE(isNewer("1.3", "1.3.0") || isNewer("1.3.0", "1.3"));
    // What is no version is neither newer nor older.
    for (const char *odd : {"1.5b", "v1.5", "1.5-beta", "1..5", "2.", ".2", "", "+2", "2. 1",
             "\xD9\xA2", "99999999999999999999999"}) {
        EXPECT_FALSE(isNewer(odd, "0") || isNewer("9", odd)) << odd;
    }
}

TEST(AppVersion, hasPagesOnTheSiteAlone)
{
    const QString &site = AppVersion::site();
    const std::tuple<std::optional<QString>, const char *, QString> rows[] = {{{}, "en", site},
        {{}, "de", site + u"de"}, {{}, "", site}, {{}, "../x", site},
        {site + u"news/2", "en", site + u"news/2"}, {site + u"news/2", "de", site + u"news/2/de"},
        {site + u"news/", "de", site + u"news/de"},
        {site.chopped(1) + u".evil.example/x", "en", site},
        {site.chopped(1) + u"@evil.example/x", "de", site + u"de"},
        {u"http" + site.mid(5), "en", site}, {u"https://elsewhere.example/?" + site, "en", site}};
    for (const auto &[link, language, page] : rows) {
        EXPECT_EQ(AppVersion::pageURL(link, QLatin1String(language)).toString(), page)
            << link.value_or(QString()).toStdString() << ' ' << language;
    }
}

} // namespace
