#include "widget/model/LimitRow.h"

LimitRow limitRow(const QString &label, const RowState &state)
{
    LimitRow row;
    row.label = label;
    row.percent = state.percentText;
    row.percentColor = state.percentColor;
    row.value = state.value.value_or(0);
    row.fill = state.fill;
    row.fillColor = state.tone.value_or(Palette::green());
    row.hasPace = state.pace.has_value();
    row.pace = state.pace.value_or(0);
    row.note = state.note;
    row.runout = state.runout.value_or(QString());
    row.runoutColor = state.runoutColor;
    QStringList parts {row.label, row.percent, row.note, row.runout};
    parts.removeAll(QString());
    row.spoken = parts.join(QStringLiteral(", "));
    return row;
}

#include "moc_LimitRow.cpp"
