#include "usage/statistics/StatsJson.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace usage {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t mostSessions = 200;

Json tokensJson(const TokenSums &tokens)
{
    return {{"input", tokens.input}, {"output", tokens.output}, {"cacheWrite", tokens.cacheWrite},
        {"total", tokens.total()}};
}

void putSpending(Json &row, const Spending &spending)
{
    if (const auto cost = spending.cost()) {
        row["cost"] = cost->dollars();
    }
    row["tokens"] = tokensJson(spending.tokens);
}

Json totalsJson(const Period &period)
{
    Json totals = Json::object();
    putSpending(totals, period.spending);
    totals["sessions"] = period.sessions.size();
    return totals;
}

Json totalsJson(const Totals &totals)
{
    return {
        {"today", totalsJson(totals.today)},
        {"yesterday", totalsJson(totals.yesterday)},
        {"week", totalsJson(totals.week)},
        {"lastWeek", totalsJson(totals.lastWeek)},
        {"month", totalsJson(totals.month)},
        {"lastMonth", totalsJson(totals.lastMonth)},
    };
}

Json providersJson(const Statistics &statistics)
{
    Json providers = Json::object();
    for (std::size_t i = 0; i < providerNames.size(); ++i) {
        providers[std::string(providerNames.at(i))] = {
            {"totals", totalsJson(statistics.byProvider.at(i))}};
    }
    return providers;
}

Json periodsJson(const std::vector<Period> &periods, const char *key, std::string (*nameOf)(Day))
{
    Json rows = Json::array();
    for (const Period &period : periods) {
        Json row {{key, nameOf(period.start)}};
        putSpending(row, period.spending);
        if (period.spending.isEstimated) {
            row["estimated"] = true;
        }
        Json models = Json::object();
        for (const auto &[model, part] : period.spending.models) {
            if (part.cost) {
                models[model] = part.cost->dollars();
            }
        }
        row["models"] = std::move(models);
        rows.push_back(std::move(row));
    }
    return rows;
}

Json sessionsJson(const std::vector<SessionSummary> &sessions)
{
    Json rows = Json::array();
    const std::size_t count = std::min(sessions.size(), mostSessions);
    for (std::size_t i = 0; i < count; ++i) {
        const SessionSummary &session = sessions[i];
        Json row = Json::object();
        if (!session.title.empty()) {
            row["title"] = session.title;
        }
        if (!session.project.empty()) {
            row["project"] = session.project;
        }
        row["end"] = TimeStamp::text(session.end);
        putSpending(row, session.spending);
        row["provider"] = providerNames.at(static_cast<std::size_t>(session.provider));
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace

std::string statsJson(const Statistics &statistics)
{
    const Json file {
        {"totals", totalsJson(statistics.totals)},
        {"providers", providersJson(statistics)},
        {"days", periodsJson(statistics.days, "date", dayText)},
        {"weeks", periodsJson(statistics.weeks, "start", dayText)},
        {"months", periodsJson(statistics.months, "month", monthText)},
        {"sessions", sessionsJson(statistics.sessions)},
    };
    return file.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace usage
