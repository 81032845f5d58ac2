#include "indexer/report/Report.h"

#include "indexer/terminal/Printable.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace indexer {

using namespace usage;

namespace {

using Json = nlohmann::ordered_json;

Json costJson(const std::optional<Money> &cost)
{
    return cost ? Json(cost->dollars()) : Json(nullptr);
}

void putFigures(Json &row, const TokenSums &tokens, const std::optional<Money> &cost)
{
    row["input"] = tokens.input;
    row["output"] = tokens.output;
    row["cacheWrite"] = tokens.cacheWrite;
    row["cacheRead"] = tokens.cacheRead;
    row["cost"] = costJson(cost);
}

Json reasonJson(Doubt doubt)
{
    switch (doubt) {
    case Doubt::Incomplete:
        return "incomplete";
    case Doubt::Assumed:
        return "assumed";
    case Doubt::Unknown:
        return "unknown";
    case Doubt::None:
        break;
    }
    return nullptr;
}

Json modelJson(const ModelSpending &spending)
{
    Json model = Json::object();
    putFigures(model, spending.tokens, spending.cost);
    model["reason"] = reasonJson(spending.doubt);
    return model;
}

/// What a model is called in a row, where another may look the same once it can be printed.
std::string keyOf(const std::string &model, const Json &models)
{
    const std::string name = printable(model);
    std::string key = name;
    for (int number = 2; models.contains(key); ++number) {
        key = fmt::format("{} ({})", name, number);
    }
    return key;
}

void putSpending(Json &row, const Spending &spending, bool byModel)
{
    putFigures(row, spending.tokens, spending.cost());
    row["estimated"] = spending.isEstimated;
    Json models = Json::object();
    for (const auto &[model, part] : spending.models) {
        models[keyOf(model, models)] = byModel ? modelJson(part) : costJson(part.cost);
    }
    row["models"] = std::move(models);
}

/// The rows of periods, and under which key each tells its start.
struct PeriodRows {
    const std::vector<Period> &periods;
    const char *key;
    std::string (*nameOf)(Day);
};

Json periodsJson(const PeriodRows &from, bool byModel)
{
    Json rows = Json::array();
    for (const Period &period : from.periods) {
        if (!period.spending.isEmpty()) {
            Json row {{from.key, from.nameOf(period.start)}};
            putSpending(row, period.spending, byModel);
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

Json sessionsJson(const std::vector<SessionSummary> &sessions, bool byModel)
{
    Json rows = Json::array();
    for (const SessionSummary &session : sessions) {
        Json row {{"title", printable(session.title)}, {"project", printable(session.project)},
            {"end", TimeStamp::text(session.end)},
            {"provider", providerNames.at(static_cast<std::size_t>(session.provider))}};
        putSpending(row, session.spending, byModel);
        rows.push_back(std::move(row));
    }
    return rows;
}

Json rowsJson(const Statistics &statistics, const ReportOptions &options)
{
    switch (options.kind) {
    case ReportKind::Daily:
        return periodsJson({statistics.days, "date", dayText}, options.byModel);
    case ReportKind::Weekly:
        return periodsJson({statistics.weeks, "start", dayText}, options.byModel);
    case ReportKind::Monthly:
        return periodsJson({statistics.months, "month", monthText}, options.byModel);
    case ReportKind::Sessions:
        break;
    }
    return sessionsJson(statistics.sessions, options.byModel);
}

} // namespace

std::string reportJson(const Statistics &statistics, const ReportOptions &options)
{
    constexpr int indent = 2;
    return rowsJson(statistics, options).dump(indent, ' ', false, Json::error_handler_t::replace)
        + '\n';
}

} // namespace indexer
