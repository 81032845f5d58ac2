#include "sources/Reading.h"

#include <cmath>
#include <QJsonObject>

std::optional<Reading> readReading(
    const QJsonValue &window, const IsoParser &moments, const WindowKeys &keys)
{
    const QJsonObject members = window.toObject();
    const QJsonValue percent = members.value(keys.percent);
    if (!percent.isDouble() || !std::isfinite(percent.toDouble())) {
        return std::nullopt;
    }
    return Reading {percent.toDouble(), moments(members.value(keys.resetsAt))};
}
