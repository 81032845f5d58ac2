#pragma once

#include "indexer/terminal/Terminal.h"

#include <string>
#include <vector>

namespace indexer {

enum class Align { Left, Right };

/// A column of a table.
struct Column {
    std::string name;
    Align align = Align::Right;
    int spare = 0;         // the highest goes first where room is short; 0 always stays
    std::size_t least = 0; // how narrow it may get by shortening its texts; 0: not at all
};

/// Lays out rows of texts below each other, in the width that there is.
class TerminalTable final {
public:
    explicit TerminalTable(std::vector<Column> columns)
        : m_columns(std::move(columns))
    {
    }

    /// One text for each column, with nothing in it that a terminal would obey.
    void add(std::vector<std::string> cells, Ink ink = Ink::Plain);
    /// A row that is set off from those above it.
    void addTotal(std::vector<std::string> cells);

    /// With a line end behind each row.
    [[nodiscard]] std::string text(const Terminal &terminal) const;

private:
    struct Row {
        std::vector<std::string> cells;
        Ink ink = Ink::Plain;
        bool isTotal = false;
    };

    /// By column; a column that is left out has no width.
    using Widths = std::vector<std::size_t>;

    [[nodiscard]] Widths naturalWidths() const;
    [[nodiscard]] Widths fittingWidths(std::size_t room) const;
    [[nodiscard]] bool shrink(Widths &widths, std::size_t room) const;
    void leaveOut(Widths &widths) const;
    [[nodiscard]] std::string line(
        const Row &row, const Widths &widths, const Terminal &terminal) const;

    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
};

} // namespace indexer
