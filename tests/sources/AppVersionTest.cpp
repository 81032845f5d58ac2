#include "sources/AppVersion.h"

#include <gtest/gtest.h>

namespace {

TEST(AppVersion, comesAfterAnother)
{
    const std::pair<const char *, const char *> newer[] = {{"1.4.0", "1.3.9"}, {"1.10", "1.9"},
        {"2", "1.99.99"}, {"1.2.0.1", "1.2"}, {" 1.5\r\n", "\t1.4 "}, {"4294967297", "4294967296"}};
    for (const auto &[candidate, base] : newer) {
        const auto a = QLatin1String(candidate);
        const auto b = QLatin1String(base);
        EXPECT_TRUE(AppVersion::isNewer(a, b) && !AppVersion::isNewer(b, a)) << candidate;
    }
    EXPECT_FALSE(AppVersion::isNewer(QStringLiteral("1.3"), QStringLiteral("1.3.0")));
    EXPECT_FALSE(AppVersion::isNewer(QStringLiteral("1.3.0"), QStringLiteral("1.3")));
    EXPECT_TRUE(AppVersion::isNewer(QStringLiteral("999999"), AppVersion::current().value()));

    // What is no version is neither newer nor older.
    for (const char *odd : {"1.5b", "v1.5", "1.5-beta", "1..5", "2.", ".2", "", "+2", "2. 1",
             "\xD9\xA2", "99999999999999999999999"}) {
        const QString rubbish = QString::fromUtf8(odd);
        EXPECT_FALSE(AppVersion::isNewer(rubbish, QStringLiteral("0"))) << odd;
        EXPECT_FALSE(AppVersion::isNewer(QStringLiteral("9"), rubbish)) << odd;
    }
}

TEST(AppVersion, hasPagesOnTheSiteAlone)
{
    const QString &site = AppVersion::site();
    ASSERT_TRUE(site.startsWith(QLatin1String("https://")) && site.endsWith(u'/'));
    const struct {
        std::optional<QString> link;
        const char *language;
        QString page;
    } rows[] = {
        {{}, "en", site},
        {{}, "de", site + u"de"},
        {site + u"news/2", "en", site + u"news/2"},
        {site + u"news/2", "de", site + u"news/2/de"},
        {site + u"news/", "de", site + u"news/de"},
        {QString(), "en", site},
        {site.chopped(1) + u".evil.example/x", "en", site},
        {site.chopped(1) + u"@evil.example/x", "de", site + u"de"},
        {u"http" + site.mid(5), "en", site},
        {QStringLiteral("https://elsewhere.example/?") + site, "de", site + u"de"},
        {{}, "", site},
        {{}, "../x", site},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(AppVersion::pageURL(row.link, QLatin1String(row.language)).toString(), row.page)
            << row.link.value_or(QString()).toStdString() << ' ' << row.language;
    }
}

} // namespace
