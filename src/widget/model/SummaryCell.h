#pragma once

#include "widget/sources/Provider.h"
#include "widget/sources/Stats.h"
#include <QObject>

class Strings;

/// What one calendar span cost, in ready texts.
class SummaryCell final {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString cost MEMBER cost)
    Q_PROPERTY(QString tokens MEMBER tokens)
    Q_PROPERTY(QString spoken MEMBER spoken)
    Q_PROPERTY(double amount MEMBER amount)
    Q_PROPERTY(double spent MEMBER spent)

public:
    QString label;     ///< "Today"
    QString cost;      ///< money
    QString tokens;    ///< tokens spent
    QString spoken;    ///< all three in words, for a screen reader
    double amount = 0; ///< US dollars: which way the money's digits roll
    double spent = 0;  ///< tokens: which way theirs do

    bool operator==(const SummaryCell &) const = default;
};

/// The six spans of a provider: today, this week, this month, then the one before each. A provider
/// without figures of its own has zeros.
[[nodiscard]] QList<SummaryCell> summaryCells(
    const Stats &stats, Provider provider, const Strings &strings);
