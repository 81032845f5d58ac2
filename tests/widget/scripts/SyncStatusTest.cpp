#include "widget/scripts/SyncStatus.h"

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

TEST(SyncStatus, takesWhatIsOfAWrongTypeAsNotTold)
{
    const SyncStatus rest {.name = u"b"_qs};
    for (const char *wrong : {R"("id": 1)", R"("enabled": "yes")", R"("hasPassword": 1)",
             R"("lastSync": [])", R"("historyFrom": 1)", R"("error": false)", R"("links": {})",
             R"("id": null)", R"("id": "A", "id": {})"}) {
        EXPECT_EQ(SyncStatus::parse("{" + QByteArray(wrong) + R"(, "name": "b"})"), rest) << wrong;
    }
    const QList<SyncLink> links {{.id = u"A"_qs, .enabled = false}, {.id = u""_qs}};
    const auto told = SyncStatus::parse(R"({"name": {}, "links": [null, {"id": "A", "name": 1,
        "os": [], "enabled": false, "seenAt": {}}, {}, 7, {"id": 7}, {"id": ""}]})");
    EXPECT_EQ(told, (SyncStatus {.links = links}));
    for (const char *text : {"", "Error: no", "[]", "null", R"({"id": "A")"}) {
        EXPECT_EQ(SyncStatus::parse(text), std::nullopt) << text;
    }
    EXPECT_EQ(SyncStatus::parse("{}" + QByteArray(SyncStatus::most, ' ')), std::nullopt);
}

} // namespace
