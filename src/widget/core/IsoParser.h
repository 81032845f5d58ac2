#pragma once

#include "formats/TimePoint.h"
#include <optional>
#include <QJsonValue>

/// Reads time stamps out of Qt's texts and JSON values, as TimeStamp does.
class IsoParser final {
public:
    [[nodiscard]] std::optional<TimePoint> operator()(const QJsonValue &value) const;
    [[nodiscard]] std::optional<TimePoint> operator()(QStringView text) const;
};

/// The parser for one reader; keep it for all values of a file.
[[nodiscard]] IsoParser isoParser();
