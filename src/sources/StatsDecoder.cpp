#include "sources/StatsDecoder.h"

#include "sources/TypedReader.h"
#include <QJsonDocument>

namespace {

using Key = QLatin1String;

TokenSet tokenSet(TypedReader &r, const QJsonObject &in)
{
    return {
        .input = r.number(in, Key("input")),
        .output = r.number(in, Key("output")),
        .cacheWrite = r.number(in, Key("cacheWrite")),
        .total = r.number(in, Key("total")),
    };
}

Totals totals(TypedReader &r, const QJsonObject &in)
{
    return {
        .cost = r.number(in, Key("cost")),
        .tokens = r.object(in, Key("tokens"), tokenSet),
        .sessions = r.number(in, Key("sessions")),
    };
}

StatsTotals statsTotals(TypedReader &r, const QJsonObject &in)
{
    return {
        .today = r.object(in, Key("today"), totals),
        .yesterday = r.object(in, Key("yesterday"), totals),
        .week = r.object(in, Key("week"), totals),
        .lastWeek = r.object(in, Key("lastWeek"), totals),
        .month = r.object(in, Key("month"), totals),
        .lastMonth = r.object(in, Key("lastMonth"), totals),
    };
}

ProviderStats providerStats(TypedReader &r, const QJsonValue &value)
{
    if (!r.expect(value, QJsonValue::Object)) {
        return {};
    }
    return {.totals = r.object(value.toObject(), Key("totals"), statsTotals)};
}

double modelCost(TypedReader &r, const QJsonValue &value)
{
    return r.expect(value, QJsonValue::Double) ? value.toDouble() : 0;
}

PeriodRow periodRow(TypedReader &r, const QJsonObject &in)
{
    return {
        .date = r.text(in, Key("date")),
        .start = r.text(in, Key("start")),
        .month = r.text(in, Key("month")),
        .cost = r.number(in, Key("cost")),
        .tokens = r.object(in, Key("tokens"), tokenSet),
        .estimated = r.flag(in, Key("estimated")),
        .models = r.map<double>(in, Key("models"), modelCost),
    };
}

SessionRow sessionRow(TypedReader &r, const QJsonObject &in)
{
    return {
        .title = r.text(in, Key("title")),
        .project = r.text(in, Key("project")),
        .end = r.text(in, Key("end")),
        .cost = r.number(in, Key("cost")),
        .tokens = r.object(in, Key("tokens"), tokenSet),
        .provider = r.text(in, Key("provider")),
        .device = r.text(in, Key("device")),
    };
}

DeviceRow deviceRow(TypedReader &r, const QJsonObject &in)
{
    return {
        .id = r.requiredText(in, Key("id")),
        .name = r.text(in, Key("name")),
        .enabled = r.flag(in, Key("enabled")),
        .cost = r.number(in, Key("cost")),
        .isSelf = r.flag(in, Key("self")),
    };
}

Stats statsFile(TypedReader &r, const QJsonObject &in)
{
    return {
        .totals = r.object(in, Key("totals"), statsTotals),
        .providers = r.map<ProviderStats>(in, Key("providers"), providerStats),
        .days = r.array(in, Key("days"), periodRow),
        .weeks = r.array(in, Key("weeks"), periodRow),
        .months = r.array(in, Key("months"), periodRow),
        .sessions = r.array(in, Key("sessions"), sessionRow),
        .devices = r.array(in, Key("devices"), deviceRow),
    };
}

QString place(const QJsonParseError &error)
{
    return error.errorString() % u" at byte " % QString::number(error.offset);
}

} // namespace

std::variant<Stats, StatsDecodeError> decodeStats(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        return StatsDecodeError {place(error)};
    }
    if (!document.isObject()) {
        return StatsDecodeError {QStringLiteral("expected an object, found an array")};
    }
    TypedReader reader;
    Stats stats = statsFile(reader, document.object());
    if (reader.failed()) {
        return StatsDecodeError {reader.problem()};
    }
    return stats;
}
