#include "indexer/Report.h"

#include "indexer/Printable.h"

#include <algorithm>
#include <fmt/format.h>

namespace indexer {

namespace {

/// One line of the table; the first columns name it, the last lists the models.
struct Row {
    std::vector<std::string> cells;
};

/// "1234567" becomes "1,234,567".
std::string grouped(std::uint64_t number)
{
    constexpr std::size_t group = 3;
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > group;) {
        at -= group;
        text.insert(at, 1, ',');
    }
    return text;
}

std::string costText(const Spending &spending)
{
    const auto cost = spending.cost();
    const char *mark = spending.isEstimated ? " *" : "  ";
    return (cost ? fmt::format("${:.2f}", cost->dollars()) : std::string("?")) + mark;
}

/// At most so many characters of a text, with a sign that there was more.
std::string shortened(const std::string &text, std::size_t most)
{
    std::size_t characters = 0;
    std::size_t cut = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool startsCharacter = (static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80U;
        if (startsCharacter && characters++ == most - 1) {
            cut = at;
        }
    }
    return characters > most ? text.substr(0, cut) + "…" : text;
}

std::string modelsText(const Spending &spending)
{
    constexpr std::size_t longestModel = 48;
    std::string text;
    for (const auto &[model, part] : spending.models) {
        text += text.empty() ? "" : ", ";
        text += model.empty() ? "(model not told)" : shortened(printable(model), longestModel);
    }
    return text;
}

class Table final {
public:
    Table(std::vector<std::string> names, std::size_t left)
        : m_left(left)
    {
        for (const char *column : {"Input", "Output", "Cache write", "Cache read", "Cost  "}) {
            names.emplace_back(column);
        }
        names.emplace_back("Models");
        m_rows.push_back({std::move(names)});
    }

    void add(std::vector<std::string> names, const Spending &spending)
    {
        m_sum += spending;
        put(std::move(names), spending, modelsText(spending));
    }

    [[nodiscard]] std::string text();

private:
    void put(std::vector<std::string> names, const Spending &spending, std::string models)
    {
        for (const std::uint64_t tokens : {spending.tokens.input, spending.tokens.output,
                 spending.tokens.cacheWrite, spending.tokens.cacheRead}) {
            names.push_back(grouped(tokens));
        }
        names.push_back(costText(spending));
        names.push_back(std::move(models));
        m_rows.push_back({std::move(names)});
    }

    [[nodiscard]] std::string line(const Row &row, const std::vector<std::size_t> &widths) const;

    std::size_t m_left; // columns that stand on the left side
    std::vector<Row> m_rows;
    Spending m_sum;
};

/// The columns that a text takes on a terminal.
std::size_t widthOf(const std::string &text)
{
    // Padding to a width that every cell has tells the width that the formatter sees.
    constexpr std::size_t enough = 1000;
    return enough + text.size() - fmt::format("{:<{}}", text, enough).size();
}

std::string Table::line(const Row &row, const std::vector<std::size_t> &widths) const
{
    std::string text;
    for (std::size_t column = 0; column < row.cells.size(); ++column) {
        const bool isLast = column + 1 == row.cells.size();
        text += column == 0 ? "" : "  ";
        if (isLast) {
            text += row.cells[column];
        } else if (column < m_left) {
            text += fmt::format("{:<{}}", row.cells[column], widths[column]);
        } else {
            text += fmt::format("{:>{}}", row.cells[column], widths[column]);
        }
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text + '\n';
}

std::string Table::text()
{
    std::vector<std::string> names(m_left);
    names.front() = "Total";
    put(std::move(names), m_sum, {});

    std::vector<std::size_t> widths(m_rows.front().cells.size());
    for (const Row &row : m_rows) {
        for (std::size_t column = 0; column < widths.size(); ++column) {
            widths[column] = std::max(widths[column], widthOf(row.cells[column]));
        }
    }
    std::string text;
    for (const Row &row : m_rows) {
        if (&row == &m_rows.back()) {
            text += '\n';
        }
        text += line(row, widths);
        if (&row == &m_rows.front()) {
            text += '\n';
        }
    }
    if (m_sum.isEstimated) {
        text += "\n* Some of this usage has no known price or was not recorded to its end, so the"
                " true cost is higher.\n";
    }
    return text;
}

std::string periodTable(
    const std::vector<Period> &periods, const char *name, std::string (*nameOf)(Day))
{
    Table table({name}, 1);
    for (const Period &period : periods) {
        if (!period.spending.isEmpty()) {
            table.add({nameOf(period.start)}, period.spending);
        }
    }
    return table.text();
}

std::string sessionTable(const std::vector<SessionSummary> &sessions)
{
    constexpr std::size_t longestTitle = 40;
    constexpr std::size_t longestProject = 24;
    Table table({"Ended", "Project", "Title"}, 3);
    LocalCalendar calendar;
    for (const SessionSummary &session : sessions) {
        table.add({dayText(calendar.dayOf(session.end)),
                      shortened(printable(session.project), longestProject),
                      shortened(session.title, longestTitle)},
            session.spending);
    }
    return table.text();
}

} // namespace

std::string reportTable(const Statistics &statistics, ReportKind kind)
{
    switch (kind) {
    case ReportKind::Daily:
        return periodTable(statistics.days, "Date", dayText);
    case ReportKind::Weekly:
        return periodTable(statistics.weeks, "Week of", dayText);
    case ReportKind::Monthly:
        return periodTable(statistics.months, "Month", monthText);
    case ReportKind::Sessions:
        break;
    }
    return sessionTable(statistics.sessions);
}

} // namespace indexer
