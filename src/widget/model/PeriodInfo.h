#pragma once

#include "widget/model/HistoryTab.h"
#include "widget/sources/Stats.h"
#include <QObject>

class Strings;

/// The history card's summary line: the current period and the one before it.
class PeriodInfo final {
    Q_GADGET
    Q_PROPERTY(QString cost MEMBER cost)
    Q_PROPERTY(QString note MEMBER note)
    Q_PROPERTY(QString prevLabel MEMBER prevLabel)
    Q_PROPERTY(QString prevCost MEMBER prevCost)
    Q_PROPERTY(double amount MEMBER amount)
    Q_PROPERTY(double prevAmount MEMBER prevAmount)

public:
    QString cost;          ///< money of the current period
    QString note;          ///< its name, tokens and sessions; or why there is nothing
    QString prevLabel;     ///< name of the period before
    QString prevCost;      ///< its money
    double amount = 0;     ///< US dollars of the current period
    double spent = 0;      ///< its tokens
    double prevAmount = 0; ///< US dollars of the period before

    bool operator==(const PeriodInfo &) const = default;
};

/// The line for a tab, of both providers together. Without statistics it says whether they are
/// being collected or the runtime that collects them is missing.
[[nodiscard]] PeriodInfo periodInfo(
    const std::optional<Stats> &stats, HistoryTab tab, bool noNode, const Strings &strings);
