#include "widget/core/IsoParser.h"

#include "formats/TimeStamp.h"

std::optional<TimePoint> IsoParser::operator()(QStringView text) const
{
    const QByteArray bytes = text.toUtf8();
    return TimeStamp::parse({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

std::optional<TimePoint> IsoParser::operator()(const QJsonValue &value) const
{
    if (value.isString()) {
        return operator()(QStringView(value.toString()));
    }
    return value.isDouble() ? TimeStamp::of(value.toDouble()) : std::nullopt;
}

IsoParser isoParser()
{
    return {};
}
