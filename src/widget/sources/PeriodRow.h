#pragma once

#include "widget/sources/ModelCost.h"
#include "widget/sources/TokenSet.h"
#include <QList>

/// One bar of the history: a day has `date`, a week `start` (its first day), a month `month`.
struct PeriodRow {
    std::optional<QString> date;
    std::optional<QString> start;
    std::optional<QString> month;
    std::optional<double> cost;
    std::optional<TokenSet> tokens;
    std::optional<bool> estimated;
    std::optional<QList<ModelCost>> models; ///< each model once, by id

    bool operator==(const PeriodRow &) const = default;
};
