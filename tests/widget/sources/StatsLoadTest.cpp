#include "widget/sources/StatsLoad.h"

#include "TestFiles.h"
#include "widget/core/Paths.h"

namespace {

std::string failure(const QByteArray &bytes)
{
    writeFile(Paths::stats(), bytes);
    const StatsLoad outcome = loadStatsFile();
    const auto *failed = std::get_if<StatsFailure>(&outcome);
    return failed ? failed->why.toStdString() : "loaded";
}

ParsedStats loaded(const QByteArray &bytes)
{
    EXPECT_EQ(failure(bytes), "loaded");
    const StatsLoad outcome = loadStatsFile();
    const auto *parsed = std::get_if<ParsedStats>(&outcome);
    return parsed ? *parsed : ParsedStats();
}

TEST(StatsLoad, failsWithTheReasonAndThePlace)
{
    QFile::remove(Paths::stats());
    EXPECT_EQ(std::get<StatsFailure>(loadStatsFile()).why, QLatin1String("cannot read the file"));
    writeEndless(Paths::stats());
    EXPECT_EQ(std::get<StatsFailure>(loadStatsFile()).why, QLatin1String("cannot read the file"));

    const std::pair<const char *, const char *> rows[] = {
        {"[]", "expected an object, found an array"},
        {R"({"sessions":[{},{},{},{"cost":"12"}]})",
            "sessions[3].cost: expected a number, found a string"},
        {R"({"days":[{"tokens":{"input":true}}]})",
            "days[0].tokens.input: expected a number, found a boolean"},
        {R"({"days":{}})", "days: expected an array, found an object"},
        {R"({"weeks":[{"start":20260302}]})", "weeks[0].start: expected a string, found a number"},
        {R"({"months":[{"models":{"a":1,"claude-x":null}}]})",
            "months[0].models.claude-x: expected a number, found null"},
        {R"({"months":[{"estimated":1}]})",
            "months[0].estimated: expected a boolean, found a number"},
        {R"({"providers":{"a\n2026-03-05T14:07:09Z \u202eb\u0000":1}})",
            R"(providers.a\u{a}2026-03-05T14:07:09Z \u{202e}b\u{0}: expected an object, found a number)"},
        {R"({"devices":[{"id":"a"},{"name":"b"}]})",
            "devices[1].id: expected a string, found nothing"}};
    for (const auto &[bytes, why] : rows) {
        EXPECT_EQ(failure(bytes), "decode failed: " + std::string(why)) << bytes;
    }
    EXPECT_EQ(failure("{\"providers\":{\"" + QByteArray(300'000, 'k') + "\":[]}}"),
        "decode failed: providers." + std::string(189, 'k')
            + "…: expected an object, found an array");
    const QByteArray deep = "{\"days\":" + QByteArray(100'000, '[');
    for (const char *noJson : {"", "\xEF\xBB\xBF", "null", "{\"days\":[{\"cost\":1", "{}x",
             "{\"title\":\"\xFF\"}", "{\"cost\":NaN}", deep.constData()}) {
        const std::string why = failure(noJson);
        EXPECT_EQ(why.find("decode failed: "), 0U) << why;
        EXPECT_GT(why.size(), std::string("decode failed: ").size());
    }
}

TEST(StatsLoad, takesWhateverIsMissingAsNotTold)
{
    EXPECT_EQ(loaded("{}"), ParsedStats());
    EXPECT_EQ(loaded("\xEF\xBB\xBF{\"days\":null,\"unknown\":[1]}"), ParsedStats());
    EXPECT_EQ(loaded(R"({"days":[]})").stats.days, QList<PeriodRow>());
}

TEST(StatsLoad, takesWhatIsJsonInUnusualForms)
{
    const Stats stats = loaded(R"({"devices":[{"id":"c:\\\ud83dx 1234567890123456789012"}],
        "months":[{"cost":123456789012345678901}]})")
                            .stats;
    EXPECT_EQ(stats.devices->constFirst().id, u"c:\\\uFFFDx 1234567890123456789012"_qs);
    EXPECT_EQ(stats.months, (QList<PeriodRow> {{.cost = 123456789012345678901.0}}));
    EXPECT_EQ(loaded(R"({"days":[],"days":null})"), ParsedStats());
}

TEST(StatsLoad, keepsEveryField)
{
    const Stats stats = loaded(R"({
        "totals":{"today":{"cost":1.5,"tokens":{"input":1,"output":2,"cacheWrite":3,"total":9},
                           "sessions":4},"yesterday":{"cost":2},"week":{"cost":3},
                  "lastWeek":{"cost":4},"month":{"cost":5},"lastMonth":{}},
        "providers":{"claude":{"totals":{"week":{"cost":7}}},"other":{}},
        "days":[{"date":"2026-03-05","cost":1,"estimated":true,"models":{"b":2,"a":1}}],
        "weeks":[{"start":"2026-03-02","tokens":{}}],
        "months":[{"month":"2026-03","cost":9007199254740993},{"models":{}}],
        "devices":[{"id":"A","name":"n","enabled":false,"cost":2,"self":true}]})")
                            .stats;
    const auto span = [](double cost) { return Totals {.cost = cost}; };
    const Totals today {1.5, TokenSet {1, 2, 3, 9}, 4};
    EXPECT_EQ(stats.totals, (StatsTotals {today, span(2), span(3), span(4), span(5), Totals()}));
    const QMap<QString, ProviderStats> providers {
        {u"claude"_qs, {StatsTotals {.week = span(7)}}}, {u"other"_qs, {}}};
    EXPECT_EQ(stats.providers, providers);
    const QList<ModelCost> models {{u"a"_qs, 1}, {u"b"_qs, 2}};
    EXPECT_EQ(stats.days->at(0), (PeriodRow {u"2026-03-05"_qs, {}, {}, 1, {}, true, models}));
    EXPECT_EQ(stats.weeks->at(0), (PeriodRow {.start = u"2026-03-02"_qs, .tokens = TokenSet()}));
    const PeriodRow month {.month = u"2026-03"_qs, .cost = 9007199254740992};
    EXPECT_EQ(stats.months->at(0), month);
    EXPECT_EQ(stats.months->at(1), PeriodRow {.models = QList<ModelCost>()});
    EXPECT_EQ(stats.devices, (QList<DeviceRow> {{u"A"_qs, u"n"_qs, false, 2, true}}));
}

TEST(StatsLoad, buildsTheSessionListInTheFilesOrder)
{
    const ParsedStats parsed = loaded(R"({
        "devices":[{"id":"A","name":""},{"id":"B","name":"laptop"},{"id":"B","name":"second"}],
        "sessions":[
            {"title":"t","project":"p","end":"2026-03-05T14:07:09.123Z","cost":2.5,"device":"B",
             "tokens":{"input":10,"output":5,"cacheWrite":2,"total":99},"provider":"codex"},
            {"tokens":{"input":0,"output":0,"total":1234},"device":"A"},
            {"end":"soon","device":"C"}]})");
    const TimePoint end(std::chrono::milliseconds(1772719629123));
    const QList<SessionItem> expected {
        {0, u"t"_qs, u"p"_qs, end, 2.5, 17, u"codex"_qs, u"laptop"_qs},
        {1, {}, {}, {}, 0, 1234, u"claude"_qs, u"A"_qs}, {2, {}, {}, {}, 0, 0, u"claude"_qs, {}}};
    EXPECT_EQ(parsed.sessions, expected);
}

TEST(TokenSet, fallsBackToTheTotalOnly)
{
    EXPECT_EQ((TokenSet {0, 0, {}, 500}).spent(), 500);
    EXPECT_EQ((TokenSet {10, {}, {}, 500}).spent(), 10);
    EXPECT_EQ((TokenSet {{}, {}, 7, {}}).spent(), 7);
    EXPECT_EQ(TokenSet().spent(), 0);
}

} // namespace
