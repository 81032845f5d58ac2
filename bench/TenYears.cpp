#include "TenYears.h"

#include "fail.h"
#include "pictures/Canned.h"
#include "widget/core/Paths.h"
#include <nlohmann/json.hpp>
#include <QDateTime>
#include <QFile>

namespace {

// Keys stand in the indexer's own order: sorted ones would be quicker to read.
using Json = nlohmann::ordered_json;

constexpr int days = 3653;
constexpr int sessionCount = 5000;

Json tokensJson(const TokenSet &tokens)
{
    // Cache reads are most of a total.
    constexpr double reads = 8;
    return {{"input", tokens.input.value()}, {"output", tokens.output.value()},
        {"cacheWrite", tokens.cacheWrite.value()}, {"total", tokens.spent() * reads}};
}

Json spanJson(const Totals &totals)
{
    return {{"cost", totals.cost.value()}, {"tokens", tokensJson(totals.tokens.value())},
        {"sessions", totals.sessions.value()}};
}

Json totalsJson(const StatsTotals &totals)
{
    return {{"today", spanJson(totals.today.value())},
        {"yesterday", spanJson(totals.yesterday.value())}, {"week", spanJson(totals.week.value())},
        {"lastWeek", spanJson(totals.lastWeek.value())}, {"month", spanJson(totals.month.value())},
        {"lastMonth", spanJson(totals.lastMonth.value())}};
}

Json periodsJson(const PeriodRows &rows, const char *key, std::optional<QString> PeriodRow::*name)
{
    Json list = Json::array();
    for (qsizetype place = 0; place < rows.size(); ++place) {
        const PeriodRow row = rows.at(place);
        Json models = Json::object();
        for (const auto &[model, cost] : row.models.value()) {
            models[model.toStdString()] = cost;
        }
        Json period {{key, (row.*name)->toStdString()}, {"cost", row.cost.value()},
            {"tokens", tokensJson(row.tokens.value())}};
        if (row.estimated.value()) {
            period["estimated"] = true;
        }
        period["models"] = std::move(models);
        list.push_back(std::move(period));
    }
    return list;
}

Json sessionsJson(const QList<SessionItem> &sessions)
{
    Json list = Json::array();
    for (const SessionItem &session : sessions) {
        const TokenSet tokens {session.spent / 10, session.spent / 5, session.spent * 0.7, {}};
        const qint64 end = session.end->time_since_epoch().count();
        const QString endText =
            QDateTime::fromMSecsSinceEpoch(end, Qt::UTC).toString(Qt::ISODateWithMs);
        list.push_back(
            {{"title", session.title.toStdString()}, {"project", session.project.toStdString()},
                {"end", endText.toStdString()}, {"cost", session.cost},
                {"tokens", tokensJson(tokens)}, {"provider", session.provider.toStdString()}});
    }
    return list;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        fail(QStringLiteral("cannot write ") % path);
    }
}

} // namespace

QByteArray TenYears::statistics()
{
    const ParsedStats parsed = Canned::statistics({.days = days, .sessions = sessionCount});
    const Stats &stats = parsed.stats;
    Json providers = Json::object();
    for (auto it = stats.providers->begin(); it != stats.providers->end(); ++it) {
        providers[it.key().toStdString()] = {{"totals", totalsJson(it->totals.value())}};
    }
    const Json file {
        {"totals", totalsJson(stats.totals.value())},
        {"providers", std::move(providers)},
        {"days", periodsJson(stats.days.value(), "date", &PeriodRow::date)},
        {"weeks", periodsJson(stats.weeks.value(), "start", &PeriodRow::start)},
        {"months", periodsJson(stats.months.value(), "month", &PeriodRow::month)},
        {"sessions", sessionsJson(parsed.sessions.first(sessionCount))},
    };
    return QByteArray::fromStdString(file.dump() + '\n');
}

TenYears::Home::Home(Panel panel)
{
    const Json state {{"view", "window"}, {"expanded", true}, {"updateCheck", false},
        {"hidden", panel == Panel::Hidden}, {"left", 100}, {"top", 50}};
    write(Paths::stats(), statistics());
    write(Paths::state(), QByteArray::fromStdString(state.dump()));
}

void TenYears::Home::renew()
{
    write(Paths::stats(), statistics());
}

TenYears::Home::~Home()
{
    for (const QString &path : {Paths::stats(), Paths::state(), Paths::log(), Paths::lock()}) {
        QFile::remove(path);
    }
}
