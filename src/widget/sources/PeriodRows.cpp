#include "widget/sources/PeriodRows.h"

#include <QDataStream>
#include <QIODevice>

namespace {

QDataStream &operator<<(QDataStream &out, const TokenSet &tokens);
QDataStream &operator>>(QDataStream &in, TokenSet &tokens);

template <typename Value> void put(QDataStream &out, const std::optional<Value> &value)
{
    out << value.has_value();
    if (value) {
        out << *value;
    }
}

template <typename Value> void take(QDataStream &in, std::optional<Value> &value)
{
    bool isTold = false;
    in >> isTold;
    if (isTold) {
        in >> value.emplace();
    }
}

QDataStream &operator<<(QDataStream &out, const TokenSet &tokens)
{
    put(out, tokens.input);
    put(out, tokens.output);
    put(out, tokens.cacheWrite);
    put(out, tokens.total);
    return out;
}

QDataStream &operator>>(QDataStream &in, TokenSet &tokens)
{
    take(in, tokens.input);
    take(in, tokens.output);
    take(in, tokens.cacheWrite);
    take(in, tokens.total);
    return in;
}

} // namespace

PeriodRows::PeriodRows(const QList<PeriodRow> &rows)
{
    reserve(rows.size());
    for (const PeriodRow &row : rows) {
        append(row);
    }
}

void PeriodRows::append(const PeriodRow &row)
{
    m_starts.append(m_bytes.size());
    QDataStream out(&m_bytes, QIODevice::Append);
    put(out, row.date);
    put(out, row.start);
    put(out, row.month);
    put(out, row.cost);
    put(out, row.tokens);
    put(out, row.estimated);
    out << row.models.has_value();
    if (row.models) {
        out << static_cast<quint32>(row.models->size());
        for (const auto &[model, cost] : *row.models) {
            out << modelId(model) << cost;
        }
    }
}

PeriodRow PeriodRows::at(qsizetype place) const
{
    const qsizetype start = m_starts.at(place);
    QDataStream in(QByteArray::fromRawData(m_bytes.constData() + start, m_bytes.size() - start));
    PeriodRow row;
    take(in, row.date);
    take(in, row.start);
    take(in, row.month);
    take(in, row.cost);
    take(in, row.tokens);
    take(in, row.estimated);
    bool hasModels = false;
    in >> hasModels;
    if (hasModels) {
        quint32 count = 0;
        in >> count;
        row.models.emplace().resize(count);
        for (ModelCost &model : *row.models) {
            quint32 id = 0;
            in >> id >> model.cost;
            model.model = m_models.at(id);
        }
    }
    return row;
}

quint32 PeriodRows::modelId(const QString &model)
{
    const auto known = m_modelIds.constFind(model);
    if (known != m_modelIds.cend()) {
        return *known;
    }
    m_models.append(model);
    return *m_modelIds.insert(model, static_cast<quint32>(m_models.size() - 1));
}
