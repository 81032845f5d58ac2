#pragma once

<<<<<<< HEAD
#include "indexer/Terminal.h"

#include <string>
=======
#include "indexer/TextPool.h"

#include <string>
#include <string_view>
>>>>>>> 146b45f (indexer: let a rollout stand by itself, so that it can be kept and read on)
#include <vector>

namespace indexer {

<<<<<<< HEAD
enum class Align { Left, Right };

/// A column of a table.
struct Column {
    std::string name;
    Align align = Align::Right;
    int spare = 0;         // the highest goes first where room is short; 0 always stays
    std::size_t least = 0; // how narrow it may get by shortening its texts; 0: not at all
};

/// Lays out rows of texts below each other, in the width that there is.
class TextTable final {
public:
    explicit TextTable(std::vector<Column> columns)
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
=======
/// The few texts of one file, each once and numbered in the order of arrival; 0 is the empty text.
/// Unlike a TextPool it is small, and can be copied.
class TextTable final {
public:
    [[nodiscard]] bool operator==(const TextTable &) const = default;
    [[nodiscard]] std::string_view text(TextId id) const
    {
        return id == 0 ? std::string_view() : m_texts[id - 1];
    }
    /// How many numbers there are, that of the empty text included.
    [[nodiscard]] std::size_t size() const { return m_texts.size() + 1; }

    TextId add(std::string_view text);

private:
    std::vector<std::string> m_texts;
>>>>>>> 146b45f (indexer: let a rollout stand by itself, so that it can be kept and read on)
};

} // namespace indexer
