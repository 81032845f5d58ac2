#include "indexer/Report.h"

#include <nlohmann/json.hpp>

namespace indexer {

namespace {

using Json = nlohmann::ordered_json;

Json costJson(const std::optional<Money> &cost)
{
    return cost ? Json(cost->dollars()) : Json(nullptr);
}

void putSpending(Json &row, const Spending &spending)
{
    row["input"] = spending.tokens.input;
    row["output"] = spending.tokens.output;
    row["cacheWrite"] = spending.tokens.cacheWrite;
    row["cacheRead"] = spending.tokens.cacheRead;
    row["cost"] = costJson(spending.cost());
    Json models = Json::object();
    for (const auto &[model, part] : spending.models) {
        models[model] = costJson(part.cost);
    }
    row["models"] = std::move(models);
}

Json periodsJson(const std::vector<Period> &periods, const char *key, std::string (*nameOf)(Day))
{
    Json rows = Json::array();
    for (const Period &period : periods) {
        if (!period.spending.isEmpty()) {
            Json row {{key, nameOf(period.start)}};
            putSpending(row, period.spending);
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

Json sessionsJson(const std::vector<SessionSummary> &sessions)
{
    Json rows = Json::array();
    for (const SessionSummary &session : sessions) {
        Json row {{"title", session.title}, {"project", session.project},
            {"end", momentText(session.end)},
            {"provider", providerNames.at(static_cast<std::size_t>(session.provider))}};
        putSpending(row, session.spending);
        rows.push_back(std::move(row));
    }
    return rows;
}

Json rowsJson(const Statistics &statistics, ReportKind kind)
{
    switch (kind) {
    case ReportKind::Daily:
        return periodsJson(statistics.days, "date", dayText);
    case ReportKind::Weekly:
        return periodsJson(statistics.weeks, "start", dayText);
    case ReportKind::Monthly:
        return periodsJson(statistics.months, "month", monthText);
    case ReportKind::Sessions:
        break;
    }
    return sessionsJson(statistics.sessions);
}

} // namespace

std::string reportJson(const Statistics &statistics, ReportKind kind)
{
    constexpr int indent = 2;
    return rowsJson(statistics, kind).dump(indent) + '\n';
}

} // namespace indexer
