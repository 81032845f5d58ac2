#include "indexer/terminal/TerminalTable.h"

#include "indexer/terminal/TextWidth.h"

#include <algorithm>
#include <numeric>

namespace indexer {

namespace {

constexpr std::size_t gap = 2; // between columns

std::size_t wholeWidth(const std::vector<std::size_t> &widths)
{
    const auto shown = static_cast<std::size_t>(
        std::count_if(widths.begin(), widths.end(), [](std::size_t width) { return width > 0; }));
    const std::size_t gaps = shown == 0 ? 0 : gap * (shown - 1);
    return std::accumulate(widths.begin(), widths.end(), gaps);
}

} // namespace

void TerminalTable::add(std::vector<std::string> cells, Ink ink)
{
    m_rows.push_back({.cells = std::move(cells), .ink = ink});
}

void TerminalTable::addTotal(std::vector<std::string> cells)
{
    m_rows.push_back({.cells = std::move(cells), .ink = Ink::Bold, .isTotal = true});
}

TerminalTable::Widths TerminalTable::naturalWidths() const
{
    Widths widths;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        std::size_t width = widthOf(m_columns[i].name);
        for (const Row &row : m_rows) {
            width = std::max(width, widthOf(row.cells[i]));
        }
        widths.push_back(width);
    }
    return widths;
}

/// Takes the room that is missing from the columns that can do with less, the widest first; false
/// when that is not enough.
bool TerminalTable::shrink(Widths &widths, std::size_t room) const
{
    while (wholeWidth(widths) > room) {
        std::size_t widest = m_columns.size();
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const bool canShrink = m_columns[i].least > 0 && widths[i] > m_columns[i].least;
            if (canShrink && (widest == m_columns.size() || widths[i] >= widths[widest])) {
                widest = i;
            }
        }
        if (widest == m_columns.size()) {
            return false;
        }
        --widths[widest];
    }
    return true;
}

void TerminalTable::leaveOut(Widths &widths) const
{
    std::size_t first = 0;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const int spare = widths[i] > 0 ? m_columns[i].spare : 0;
        if (spare > (widths[first] > 0 ? m_columns[first].spare : 0)) {
            first = i;
        }
    }
    widths[first] = m_columns[first].spare > 0 ? 0 : widths[first];
}

TerminalTable::Widths TerminalTable::fittingWidths(std::size_t room) const
{
    Widths widths = naturalWidths();
    if (room == 0) {
        return widths;
    }
    for (std::size_t tries = 0; tries <= m_columns.size(); ++tries) {
        Widths narrow = widths;
        if (shrink(narrow, room)) {
            return narrow;
        }
        leaveOut(widths);
    }
    static_cast<void>(shrink(widths, room)); // it never fits
    return widths;
}

std::string TerminalTable::line(
    const Row &row, const Widths &widths, const Terminal &terminal) const
{
    std::string text;
    std::size_t blanks = 0; // kept back, so that no line ends in them
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (widths[i] == 0) {
            continue;
        }
        const std::string cell = shortened(row.cells[i], widths[i]);
        const std::size_t padding = widths[i] - std::min(widths[i], widthOf(cell));
        const bool isLeft = m_columns[i].align == Align::Left;
        const std::size_t inside = cell.find_last_not_of(' ') + 1; // without blanks behind it
        const bool isZero = row.ink == Ink::Plain && cell == "0";
        blanks += isLeft ? 0 : padding;
        if (inside > 0) {
            text.append(blanks, ' ');
            blanks = 0;
            text += inked(cell.substr(0, inside), isZero ? Ink::Dim : row.ink, terminal);
        }
        blanks += cell.size() - inside + (isLeft ? padding : 0) + gap;
    }
    return text + '\n';
}

std::string TerminalTable::text(const Terminal &terminal) const
{
    const Widths widths = fittingWidths(terminal.width);
    Row names {.cells = {}, .ink = Ink::Bold};
    for (const Column &column : m_columns) {
        names.cells.push_back(column.name);
    }
    std::string text = line(names, widths, terminal) + '\n';
    for (const Row &row : m_rows) {
        text += row.isTotal ? "\n" : "";
        text += line(row, widths, terminal);
    }
    return text;
}

} // namespace indexer
