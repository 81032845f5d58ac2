#pragma once

#include <QString>

/// What one model cost, in US dollars.
struct ModelCost {
    QString model; ///< its id
    double cost = 0;

    bool operator==(const ModelCost &) const = default;
};
