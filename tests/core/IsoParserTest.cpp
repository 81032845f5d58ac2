#include "core/IsoParser.h"

#include <gtest/gtest.h>
#include <QJsonArray>

namespace {

std::optional<qint64> parsed(const QJsonValue &value)
{
    const std::optional<TimePoint> time = isoParser()(value);
    return time ? std::optional(time->time_since_epoch().count()) : std::nullopt;
}

TEST(IsoParser, readsTexts)
{
    const struct {
        const char *text;
        std::optional<qint64> ms;
    } rows[] = {
        {"2026-03-05T14:07:09Z", 1772719629000},
        {"2026-03-05T14:07:09.123Z", 1772719629123},
        {"2026-03-05T14:07:09.1Z", 1772719629100},
        {"2026-03-05T14:07:09.123999999Z", 1772719629123},
        {"2026-03-05T15:07:09+01:00", 1772719629000},
        {"2026-03-05T10:37:09.5-0330", 1772719629500},
        {"1969-12-31T23:59:59.999Z", -1},
        {"9999-12-31T23:59:59Z", 253402300799000},
        {"2026-03-05T14:07:09", std::nullopt},
        {"2026-03-05", std::nullopt},
        {"2026-02-30T14:07:09Z", std::nullopt},
        {"2026-03-05T24:00:00Z", std::nullopt},
        {"2026-03-05T14:07:09.Z", std::nullopt},
        {"2026-03-05T14:07:09+25:00", std::nullopt},
        {"2026-03-05T14:07:09Zulu", std::nullopt},
        {" 2026-03-05T14:07:09Z", std::nullopt},
        {"2026-03-05T14:07:0٩Z", std::nullopt},
        {"yesterday", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(parsed(QString::fromUtf8(row.text)), row.ms) << row.text;
    }
}

TEST(IsoParser, takesLargeNumbersAsMilliseconds)
{
    const struct {
        QJsonValue value;
        std::optional<qint64> ms;
    } rows[] = {
        {1760000000, 1760000000000},
        {1760000000000.0, 1760000000000},
        {100e9, 100'000'000'000'000},
        {100e9 + 1, 100'000'000'001},
        {1.5, 1500},
        {-2.0005, -2001},
        {1e300, std::nullopt},
        {-1e300, std::nullopt},
        {true, std::nullopt},
        {QJsonValue(QJsonValue::Null), std::nullopt},
        {QJsonArray {1760000000}, std::nullopt},
        {QJsonValue(QJsonValue::Undefined), std::nullopt},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(parsed(row.value), row.ms) << row.value.toDouble();
    }
}

} // namespace
