#include "indexer/Report.h"

#include "indexer/Printable.h"

#include <fmt/format.h>

namespace indexer {

namespace {

constexpr std::string_view lineEnd = "\r\n"; // as RFC 4180 has it

/// A text from elsewhere as one cell. What a spreadsheet would take for a formula gets an
/// apostrophe in front, which keeps it a text.
std::string cell(const std::string &text)
{
    const std::string safe = printable(text);
    const std::size_t first = safe.find_first_not_of(' ');
    const bool isFormula = first != std::string::npos
        && std::string_view("=+-@").find(safe[first]) != std::string::npos;
    std::string whole = (isFormula ? "'" : "") + safe;
    if (whole.find_first_of("\",\r\n") == std::string::npos && whole == safe) {
        return whole;
    }
    std::string quoted = "\"";
    for (const char c : whole) {
        quoted.append(c == '"' ? 2 : 1, c);
    }
    return quoted + '"';
}

std::string figures(const TokenSums &tokens, const std::optional<Money> &cost)
{
    return fmt::format("{},{},{},{},{}", tokens.input, tokens.output, tokens.cacheWrite,
        tokens.cacheRead, cost ? fmt::format("{:.6f}", cost->dollars()) : std::string());
}

/// The lines of a row whose first cells are told.
std::string lines(const std::string &names, const Spending &spending, bool byModel)
{
    if (!byModel) {
        return fmt::format("{},{},{}{}", names, figures(spending.tokens, spending.cost()),
            spending.isEstimated ? "true" : "false", lineEnd);
    }
    std::string text;
    for (const auto &[model, part] : spending.models) {
        text +=
            fmt::format("{},{},{}{}", names, cell(model), figures(part.tokens, part.cost), lineEnd);
    }
    return text;
}

std::string header(std::string_view names, bool byModel)
{
    return fmt::format("{},{}input,output,cacheWrite,cacheRead,cost{}{}", names,
        byModel ? "model," : "", byModel ? "" : ",estimated", lineEnd);
}

std::string periodLines(
    const std::vector<Period> &periods, std::string (*nameOf)(Day), bool byModel)
{
    std::string text;
    for (const Period &period : periods) {
        if (!period.spending.isEmpty()) {
            text += lines(nameOf(period.start), period.spending, byModel);
        }
    }
    return text;
}

std::string sessionLines(const std::vector<SessionSummary> &sessions, bool byModel)
{
    std::string text;
    for (const SessionSummary &session : sessions) {
        const std::string names = fmt::format("{},{},{},{}", momentText(session.end),
            providerNames.at(static_cast<std::size_t>(session.provider)), cell(session.project),
            cell(session.title));
        text += lines(names, session.spending, byModel);
    }
    return text;
}

} // namespace

std::string reportCsv(const Statistics &statistics, const ReportOptions &options)
{
    const bool byModel = options.byModel;
    switch (options.kind) {
    case ReportKind::Daily:
        return header("date", byModel) + periodLines(statistics.days, dayText, byModel);
    case ReportKind::Weekly:
        return header("start", byModel) + periodLines(statistics.weeks, dayText, byModel);
    case ReportKind::Monthly:
        return header("month", byModel) + periodLines(statistics.months, monthText, byModel);
    case ReportKind::Sessions:
        break;
    }
    return header("end,provider,project,title", byModel)
        + sessionLines(statistics.sessions, byModel);
}

} // namespace indexer
