#include "scripts/SyncStatus.h"

#include <gtest/gtest.h>

namespace {

TEST(SyncStatus, isReadFieldByField)
{
    const SyncStatus full {u"A"_qs, false, u"Büro"_qs, true,
        {{{u"B"_qs, u"b"_qs, u"linux"_qs, true, u"now"_qs}, {.id = u"B"_qs}}}, u"then"_qs,
        u"2026"_qs, u"offline"_qs};
    const QByteArray text = R"({"id": "A", "enabled": false, "name": "Büro", "hasPassword": true,
        "links": [{"id": "B", "name": "b", "os": "linux", "enabled": true, "seenAt": "now"},
            {"id": "B", "os": null}], "lastSync": "then", "historyFrom": "2026",
        "error": "offline", "more": []})";
    EXPECT_EQ(SyncStatus::parse(text), full);
    EXPECT_EQ(SyncStatus::parse("\xEF\xBB\xBF" + text), full);
    EXPECT_EQ(SyncStatus::parse("{\"id\": \"\xEF\xBB\xBFz\"}")->id, u"\uFEFFz"_qs);
    const QByteArray otherKey = "{\"\xEF\xBB\xBFname\": \"b\"}";
    EXPECT_EQ(SyncStatus::parse("\xEF\xBB\xBF" + otherKey), SyncStatus::parse(otherKey));
    EXPECT_EQ(SyncStatus::parse("{}"), SyncStatus());
    const QByteArray links = QByteArray(R"({"id": "A"},)").repeated(999) + R"({"id": "A"})";
    const auto many = SyncStatus::parse("{\"links\": [" + links + "]}");
    EXPECT_EQ(many ? many->links.value_or(QList<SyncLink>()).size() : 0, 1000);
}

TEST(SyncStatus, isNothingWhenAnythingIsOfAWrongType)
{
    for (const char *text : {"", "Error: no", "[]", R"({"id": "A")", R"({"id": 1})",
             R"({"enabled": "yes"})", R"({"name": {}})", R"({"hasPassword": 1})",
             R"({"links": {}})", R"({"links": [{"id": "A"}, null]})", R"({"links": [{}]})",
             R"({"links": [{"id": "A", "name": 1}]})", R"({"links": [{"id": "A", "os": 1}]})",
             R"({"links": [{"id": "A", "enabled": 1}]})", R"({"lastSync": 1})",
             R"({"links": [{"id": "A", "seenAt": 1}]})", R"({"historyFrom": 1})",
             R"({"error": false})"}) {
        EXPECT_EQ(SyncStatus::parse(text), std::nullopt) << text;
    }
    EXPECT_EQ(SyncStatus::parse("{}" + QByteArray(SyncStatus::most, ' ')), std::nullopt);
}

} // namespace
