#include "indexer/report/Report.h"

#include "indexer/terminal/FigureText.h"
#include "indexer/terminal/Printable.h"
#include "indexer/terminal/TerminalTable.h"
#include "indexer/terminal/TextWidth.h"

#include <algorithm>

namespace indexer {

using namespace usage;

namespace {

constexpr std::size_t longestModel = 48;

// Which columns go first where room is short.
enum Spare : int { Stays, InputGoes, OutputGoes, ProjectGoes, ReadsGo, WritesGo, ModelsGo };

using Cells = std::vector<std::string>;

std::string modelName(const std::string &model)
{
    return model.empty() ? "(model not told)" : shortened(printable(model), longestModel);
}

std::string modelsText(const Spending &spending)
{
    std::string text;
    for (const auto &[model, part] : spending.models) {
        text += text.empty() ? "" : ", ";
        text += modelName(model);
    }
    return text;
}

Cells figures(const TokenSums &tokens, const std::optional<Money> &cost, bool isEstimated)
{
    return {grouped(tokens.input), grouped(tokens.output), grouped(tokens.cacheWrite),
        grouped(tokens.cacheRead), costText(cost) + (isEstimated ? " *" : "  ")};
}

/// The table of a report: columns that name a row, then its figures, and its models last unless
/// they have rows of their own.
class ReportRows final {
public:
    ReportRows(std::vector<Column> names, bool byModel)
        : m_names(names.size())
        , m_byModel(byModel)
        , m_table(columns(std::move(names), byModel))
    {
    }

    void add(Cells names, const Spending &spending);
    [[nodiscard]] std::string text(const Terminal &terminal);

private:
    [[nodiscard]] static std::vector<Column> columns(std::vector<Column> names, bool byModel);
    [[nodiscard]] Cells row(Cells names, const Cells &figures, const std::string &models) const;
    void addModels(const Spending &spending);

    std::size_t m_names; // columns
    bool m_byModel;
    TerminalTable m_table;
    Spending m_sum;
};

std::vector<Column> ReportRows::columns(std::vector<Column> names, bool byModel)
{
    names.push_back({.name = "Input", .spare = InputGoes});
    names.push_back({.name = "Output", .spare = OutputGoes});
    names.push_back({.name = "Cache write", .spare = WritesGo});
    names.push_back({.name = "Cache read", .spare = ReadsGo});
    names.push_back({.name = "Cost  "});
    if (!byModel) {
        names.push_back({.name = "Models", .align = Align::Left, .spare = ModelsGo, .least = 16});
    }
    return names;
}

Cells ReportRows::row(Cells names, const Cells &figures, const std::string &models) const
{
    names.insert(names.end(), figures.begin(), figures.end());
    if (!m_byModel) {
        names.push_back(models);
    }
    return names;
}

void ReportRows::add(Cells names, const Spending &spending)
{
    m_sum += spending;
    m_table.add(row(std::move(names),
        figures(spending.tokens, spending.cost(), spending.isEstimated), modelsText(spending)));
    addModels(spending);
}

void ReportRows::addModels(const Spending &spending)
{
    if (!m_byModel) {
        return;
    }
    for (const auto &[model, part] : spending.models) {
        Cells names(m_names);
        names.back() = "  " + modelName(model);
        m_table.add(row(std::move(names), figures(part.tokens, part.cost, false), {}), Ink::Dim);
    }
}

std::string ReportRows::text(const Terminal &terminal)
{
    Cells names(m_names);
    names.front() = "Total";
    m_table.addTotal(
        row(std::move(names), figures(m_sum.tokens, m_sum.cost(), m_sum.isEstimated), {}));
    addModels(m_sum);
    std::string text = m_table.text(terminal);
    if (m_sum.isEstimated) {
        text +=
            "\n* An estimate: some of this usage has no known price or an assumed one, or was not"
            " recorded to its end.\n";
    }
    return text;
}

/// The rows of periods, and what these are called.
struct PeriodRows {
    const std::vector<Period> &periods;
    const char *name;
    std::string (*nameOf)(Day);
};

std::string periodTable(const PeriodRows &rows, bool byModel, const Terminal &terminal)
{
    constexpr std::size_t leastModel = 20;
    ReportRows table(
        {{.name = rows.name, .align = Align::Left, .least = byModel ? leastModel : 0}}, byModel);
    for (const Period &period : rows.periods) {
        if (!period.spending.isEmpty()) {
            table.add({rows.nameOf(period.start)}, period.spending);
        }
    }
    return table.text(terminal);
}

std::string sessionTable(
    const std::vector<SessionSummary> &sessions, bool byModel, const Terminal &terminal)
{
    constexpr std::size_t longestTitle = 40;
    constexpr std::size_t longestProject = 24;
    constexpr std::size_t leastTitle = 12;
    constexpr std::size_t leastProject = 8;
    ReportRows table(
        {{.name = "Ended", .align = Align::Left},
            {.name = "Project", .align = Align::Left, .spare = ProjectGoes, .least = leastProject},
            {.name = "Title", .align = Align::Left, .least = leastTitle}},
        byModel);
    LocalCalendar calendar;
    for (const SessionSummary &session : sessions) {
        table.add({dayText(calendar.dayOf(session.end)),
                      shortened(printable(session.project), longestProject),
                      shortened(printable(session.title), longestTitle)},
            session.spending);
    }
    return table.text(terminal);
}

} // namespace

std::string reportTable(
    const Statistics &statistics, const ReportOptions &options, const Terminal &terminal)
{
    const bool byModel = options.byModel;
    switch (options.kind) {
    case ReportKind::Daily:
        return periodTable({statistics.days, "Date", dayText}, byModel, terminal);
    case ReportKind::Weekly:
        return periodTable({statistics.weeks, "Week of", dayText}, byModel, terminal);
    case ReportKind::Monthly:
        return periodTable({statistics.months, "Month", monthText}, byModel, terminal);
    case ReportKind::Sessions:
        break;
    }
    return sessionTable(statistics.sessions, byModel, terminal);
}

} // namespace indexer
