#include "core/IsoParser.h"

#include <gtest/gtest.h>
#include <QJsonArray>

namespace {

TEST(IsoParser, readsTextsAndTakesLargeNumbersAsMilliseconds)
{
    const std::pair<QJsonValue, qint64> rows[] = {
        {QStringLiteral("2026-03-05T14:07:09Z"), 1772719629000},
        {QStringLiteral("2026-03-05T14:07:09.1Z"), 1772719629100},
        {QStringLiteral("2026-03-05T14:07:09.123999999Z"), 1772719629123},
        {QStringLiteral("2026-03-05T15:07:09+01:00"), 1772719629000},
        {QStringLiteral("2026-03-05T10:37:09.5-0330"), 1772719629500},
        {QStringLiteral("1969-12-31T23:59:59.999Z"), -1},
        {QStringLiteral("9999-12-31T23:59:59Z"), 253402300799000}, {1760000000, 1760000000000},
        {100e9, 100'000'000'000'000}, {100e9 + 1, 100'000'000'001}, {-2.0005, -2001}};
    for (const auto &[value, milliseconds] : rows) {
        const auto time = isoParser()(value);
        EXPECT_EQ(time, TimePoint(std::chrono::milliseconds(milliseconds))) << milliseconds;
    }
}

TEST(IsoParser, takesNothingElse)
{
    for (const char *text :
        {"2026-03-05T14:07:09", "2026-03-05", "2026-02-30T14:07:09Z", "2026-03-05T24:00:00Z",
            "2026-03-05T14:07:09.Z", "2026-03-05T14:07:09+25:00", "2026-03-05T14:07:09Zulu",
            " 2026-03-05T14:07:09Z", "2026-03-05T14:07:0٩Z", "yesterday", ""}) {
        EXPECT_FALSE(isoParser()(QJsonValue(QString::fromUtf8(text)))) << text;
    }
    for (const QJsonValue &value :
        {QJsonValue(1e300), QJsonValue(-1e300), QJsonValue(true), QJsonValue(),
            QJsonValue(QJsonArray {1760000000}), QJsonValue(QJsonValue::Undefined)}) {
        EXPECT_FALSE(isoParser()(value)) << value.toDouble();
    }
}

} // namespace
