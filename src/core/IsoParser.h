#pragma once

#include "core/TimePoint.h"
#include <optional>
#include <QJsonValue>

/// Reads time stamps as they stand in JSON; the one parser that all readers share.
///
/// A text is an ISO-8601 internet date-time with a zone ("Z" or an offset), with or without
/// fractional seconds. A number is seconds since 1970, or milliseconds when it is greater than
/// 100,000,000,000. Anything else, and what no TimePoint can hold, is no time.
class IsoParser final {
public:
    [[nodiscard]] std::optional<TimePoint> operator()(const QJsonValue &value) const;
    [[nodiscard]] std::optional<TimePoint> operator()(QStringView text) const;
};

/// The parser for one reader; keep it for all values of a file.
[[nodiscard]] IsoParser isoParser();
