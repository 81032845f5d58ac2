#pragma once

#include <QList>
#include <QString>

/// One line of the table: a figure and the most that it may be.
struct Row {
    QString name; ///< stays the same over time, so that results can be compared
    double figure = 0;
    double budget = 0;
    QString unit;   ///< such as "ms"; "x" for a ratio
    QString detail; ///< what the figure was made of, for the eye only

    [[nodiscard]] bool passes() const { return figure <= budget; }
};

// Each group of rows has a file of its own, which defines one of these; main.cpp calls them in
// turn. Each makes what it needs, measures, and leaves nothing behind but transcripts to measure
// with.

[[nodiscard]] QList<Row> scrollRows();
[[nodiscard]] QList<Row> changeRows();
[[nodiscard]] QList<Row> hoverRows();
[[nodiscard]] QList<Row> glideRows();
[[nodiscard]] QList<Row> indexerRows();
[[nodiscard]] QList<Row> statsRows();
[[nodiscard]] QList<Row> startRows();
[[nodiscard]] QList<Row> idleRows();
[[nodiscard]] QList<Row> tickRows();
