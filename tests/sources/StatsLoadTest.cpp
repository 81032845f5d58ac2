#include "sources/StatsLoad.h"

#include "core/Paths.h"
#include <gtest/gtest.h>
#include <QDir>
#include <QFile>

namespace {

StatsLoad load(const QByteArray &bytes)
{
    QDir().mkpath(Paths::dir());
    QFile file(Paths::stats());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    return loadStatsFile();
}

std::string failure(const QByteArray &bytes)
{
    const StatsLoad outcome = load(bytes);
    const auto *failed = std::get_if<StatsFailure>(&outcome);
    return failed ? failed->why.toStdString() : "loaded";
}

ParsedStats loaded(const QByteArray &bytes)
{
    const StatsLoad outcome = load(bytes);
    const auto *parsed = std::get_if<ParsedStats>(&outcome);
    EXPECT_TRUE(parsed) << std::get<StatsFailure>(outcome).why.toStdString();
    return parsed ? *parsed : ParsedStats();
}

TEST(StatsLoad, failsWithTheReasonAndThePlace)
{
    QFile::remove(Paths::stats());
    EXPECT_EQ(std::get<StatsFailure>(loadStatsFile()).why, QLatin1String("cannot read the file"));

    const struct {
        const char *bytes;
        const char *why;
    } rows[] = {
        {"[]", "expected an object, found an array"},
        {R"({"sessions":[{},{},{},{"cost":"12"}]})",
            "sessions[3].cost: expected a number, found a string"},
        {R"({"days":[{"tokens":{"input":true}}]})",
            "days[0].tokens.input: expected a number, found a boolean"},
        {R"({"days":{}})", "days: expected an array, found an object"},
        {R"({"days":[null]})", "days[0]: expected an object, found null"},
        {R"({"weeks":[{"start":20260302}]})", "weeks[0].start: expected a string, found a number"},
        {R"({"months":[{"models":{"a":1,"claude-x":null}}]})",
            "months[0].models.claude-x: expected a number, found null"},
        {R"({"months":[{"estimated":1}]})",
            "months[0].estimated: expected a boolean, found a number"},
        {R"({"providers":{"codex":[]}})", "providers.codex: expected an object, found an array"},
        {R"({"devices":[{"id":"a"},{"name":"b"}]})",
            "devices[1].id: expected a string, found nothing"},
        {R"({"devices":[{"id":null}]})", "devices[0].id: expected a string, found null"},
        {R"({"totals":{"lastMonth":{"sessions":{}}}})",
            "totals.lastMonth.sessions: expected a number, found an object"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(failure(row.bytes), "decode failed: " + std::string(row.why)) << row.bytes;
    }
}

TEST(StatsLoad, failsOnWhatIsNoJson)
{
    for (const char *bytes : {"", "\xEF\xBB\xBF", "{", "{\"days\":[{\"cost\":1", "null", "{}x",
             "{\"title\":\"\xFF\"}", "{\"cost\":NaN}"}) {
        const std::string why = failure(bytes);
        EXPECT_EQ(why.rfind("decode failed: ", 0), 0U) << bytes << ": " << why;
        EXPECT_GT(why.size(), std::string("decode failed: ").size()) << bytes;
    }
    const QByteArray deep = "{\"days\":" + QByteArray("[").repeated(100'000);
    EXPECT_EQ(failure(deep).rfind("decode failed: ", 0), 0U);
}

TEST(StatsLoad, takesWhateverIsMissingAsNotTold)
{
    EXPECT_EQ(loaded("{}"), ParsedStats());
    EXPECT_EQ(loaded("\xEF\xBB\xBF{\"days\":null,\"unknown\":[1]}"), ParsedStats());
    EXPECT_EQ(loaded(R"({"days":[]})").stats.days, QList<PeriodRow>());
}

TEST(StatsLoad, keepsEveryField)
{
    const Stats stats = loaded(R"({
        "totals":{"today":{"cost":1.5,"tokens":{"input":1,"output":2,"cacheWrite":3,"total":9},
                           "sessions":4},"lastMonth":{}},
        "providers":{"claude":{"totals":{"week":{"cost":7}}},"other":{}},
        "days":[{"date":"2026-03-05","cost":1,"estimated":true,"models":{"b":2,"a":1}}],
        "weeks":[{"start":"2026-03-02"}],
        "months":[{"month":"2026-03","cost":9007199254740993}],
        "devices":[{"id":"A","name":"n","enabled":false,"cost":2,"self":true}]})")
                            .stats;

    const TokenSet tokens {1, 2, 3, 9};
    const Totals today {1.5, tokens, 4};
    EXPECT_EQ(stats.totals, (StatsTotals {.today = today, .lastMonth = Totals()}));
    const ProviderStats claude {StatsTotals {.week = Totals {.cost = 7}}};
    EXPECT_EQ(stats.providers.value_or(QMap<QString, ProviderStats>()).size(), 2);
    EXPECT_EQ(stats.providers->value(QStringLiteral("claude")), claude);
    const QMap<QString, double> models {{QStringLiteral("a"), 1}, {QStringLiteral("b"), 2}};
    const PeriodRow day {
        .date = QStringLiteral("2026-03-05"), .cost = 1, .estimated = true, .models = models};
    EXPECT_EQ(stats.days, QList<PeriodRow> {day});
    EXPECT_EQ(stats.weeks, QList<PeriodRow> {{.start = QStringLiteral("2026-03-02")}});
    EXPECT_EQ(stats.months->constFirst().cost, 9007199254740993.0);
    const DeviceRow device {QStringLiteral("A"), QStringLiteral("n"), false, 2, true};
    EXPECT_EQ(stats.devices, QList<DeviceRow> {device});
}

TEST(StatsLoad, buildsTheSessionListInTheFilesOrder)
{
    const ParsedStats parsed = loaded(R"({
        "devices":[{"id":"A","name":""},{"id":"B","name":"laptop"},{"id":"B","name":"second"}],
        "sessions":[
            {"title":"t","project":"p","end":"2026-03-05T14:07:09.123Z","cost":2.5,
             "tokens":{"input":10,"output":5,"cacheWrite":2,"total":99},"provider":"codex",
             "device":"B"},
            {"end":"2026-03-05T14:07:09Z","tokens":{"input":0,"output":0,"total":1234},
             "device":"A"},
            {"end":"soon","device":"C"}]})");

    const TimePoint end(std::chrono::milliseconds(1772719629123));
    const QString codex = QStringLiteral("codex");
    const QString claude = QStringLiteral("claude");
    const QList<SessionItem> expected {
        {0, QStringLiteral("t"), QStringLiteral("p"), end, 2.5, 17, codex,
            QStringLiteral("laptop")},
        {1, {}, {}, end - std::chrono::milliseconds(123), 0, 1234, claude, QStringLiteral("A")},
        {2, {}, {}, std::nullopt, 0, 0, claude, {}},
    };
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
