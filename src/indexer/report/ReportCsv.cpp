#include "indexer/report/Report.h"

#include "indexer/terminal/Printable.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace indexer {

using namespace usage;

namespace {

constexpr std::string_view lineEnd = "\r\n"; // as RFC 4180 has it

/// Spreadsheets take wide characters, as in Chinese or Japanese texts, for narrow ones.
bool isFormula(std::string_view text)
{
    constexpr std::array<std::string_view, 3> blanks {" ", "\u00A0", "\u3000"};
    constexpr std::array<std::string_view, 8> signs {
        "=", "+", "-", "@", "\uFF1D", "\uFF0B", "\uFF0D", "\uFF20"};
    const auto isAtFront = [&text](std::string_view each) { return text.starts_with(each); };
    for (const auto *blank = blanks.begin(); blank != blanks.end();) {
        blank = std::find_if(blanks.begin(), blanks.end(), isAtFront);
        text.remove_prefix(blank == blanks.end() ? 0 : blank->size());
    }
    return std::any_of(signs.begin(), signs.end(), isAtFront);
}

/// A text from elsewhere as one cell. What a spreadsheet would take for a formula gets an
/// apostrophe in front, which keeps it a text.
std::string cell(const std::string &text)
{
    const std::string safe = printable(text);
    std::string whole = (isFormula(safe) ? "'" : "") + safe;
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
        const std::string names = fmt::format("{},{},{},{}", TimeStamp::text(session.end),
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
