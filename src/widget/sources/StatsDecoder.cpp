#include "widget/sources/StatsDecoder.h"

#include "widget/sources/TypedReader.h"

namespace {

using Object = TypedReader::Object;
using Value = TypedReader::Value;

TokenSet tokenSet(TypedReader &r, Object in)
{
    return {
        .input = r.number(in, "input"),
        .output = r.number(in, "output"),
        .cacheWrite = r.number(in, "cacheWrite"),
        .total = r.number(in, "total"),
    };
}

Totals totals(TypedReader &r, Object in)
{
    return {
        .cost = r.number(in, "cost"),
        .tokens = r.object(in, "tokens", tokenSet),
        .sessions = r.number(in, "sessions"),
    };
}

StatsTotals statsTotals(TypedReader &r, Object in)
{
    return {
        .today = r.object(in, "today", totals),
        .yesterday = r.object(in, "yesterday", totals),
        .week = r.object(in, "week", totals),
        .lastWeek = r.object(in, "lastWeek", totals),
        .month = r.object(in, "month", totals),
        .lastMonth = r.object(in, "lastMonth", totals),
    };
}

ProviderStats providerStats(TypedReader &r, Value value)
{
    return r.record(value, [](TypedReader &reader, Object in) {
        return ProviderStats {.totals = reader.object(in, "totals", statsTotals)};
    });
}

double modelCost(TypedReader &r, Value value)
{
    return r.expect(value, TypedReader::Type::DOUBLE) ? value.get_double().value_unsafe() : 0;
}

std::optional<QList<ModelCost>> modelCosts(TypedReader &r, Object in)
{
    const auto told = r.map<double>(in, "models", modelCost);
    if (!told) {
        return std::nullopt;
    }
    QList<ModelCost> costs;
    costs.reserve(told->size());
    for (auto model = told->cbegin(); model != told->cend(); ++model) {
        costs.append({model.key(), *model});
    }
    return costs;
}

PeriodRow periodRow(TypedReader &r, Object in)
{
    return {
        .date = r.text(in, "date"),
        .start = r.text(in, "start"),
        .month = r.text(in, "month"),
        .cost = r.number(in, "cost"),
        .tokens = r.object(in, "tokens", tokenSet),
        .estimated = r.flag(in, "estimated"),
        .models = modelCosts(r, in),
    };
}

SessionRow sessionRow(TypedReader &r, Object in)
{
    return {
        .title = r.text(in, "title"),
        .project = r.sharedText(in, "project"),
        .end = r.text(in, "end"),
        .cost = r.number(in, "cost"),
        .tokens = r.object(in, "tokens", tokenSet),
        .provider = r.sharedText(in, "provider"),
        .device = r.sharedText(in, "device"),
    };
}

DeviceRow deviceRow(TypedReader &r, Object in)
{
    return {
        .id = r.requiredText(in, "id"),
        .name = r.text(in, "name"),
        .enabled = r.flag(in, "enabled"),
        .cost = r.number(in, "cost"),
        .isSelf = r.flag(in, "self"),
    };
}

Stats statsFile(TypedReader &r, Object in)
{
    return {
        .totals = r.object(in, "totals", statsTotals),
        .providers = r.map<ProviderStats>(in, "providers", providerStats),
        .days = r.array<PeriodRows>(in, "days", periodRow),
        .weeks = r.array<PeriodRows>(in, "weeks", periodRow),
        .months = r.array<PeriodRows>(in, "months", periodRow),
        .sessions = r.array<QList<SessionRow>>(in, "sessions", sessionRow),
        .devices = r.array<QList<DeviceRow>>(in, "devices", deviceRow),
    };
}

} // namespace

std::variant<Stats, StatsDecodeError> decodeStats(const QByteArray &bytes)
{
    const JsonDocument document(bytes);
    if (!document.root()) {
        return StatsDecodeError {document.problem()};
    }
    TypedReader reader;
    Stats stats = reader.record(*document.root(), statsFile);
    if (reader.failed()) {
        return StatsDecodeError {reader.problem()};
    }
    return stats;
}
