#pragma once

#include "widget/sources/PeriodRow.h"
#include <QByteArray>
#include <QHash>

/// The periods of one kind, packed: ten years of days take 0.4 MB so, and 1.7 MB as records. A page
/// of the chart unpacks the few that it shows.
class PeriodRows final {
public:
    PeriodRows() = default;
    PeriodRows(const QList<PeriodRow> &rows); // NOLINT(google-explicit-constructor): the same rows

    void append(const PeriodRow &row);
    void reserve(qsizetype size) { m_starts.reserve(size); }
    [[nodiscard]] qsizetype size() const { return m_starts.size(); }
    [[nodiscard]] PeriodRow at(qsizetype place) const;

    bool operator==(const PeriodRows &) const = default;

private:
    [[nodiscard]] quint32 modelId(const QString &model);

    QByteArray m_bytes;
    QList<qsizetype> m_starts; ///< of each row in the bytes
    QList<QString> m_models;   ///< by the numbers that stand for them there
    QHash<QString, quint32> m_modelIds;
};
