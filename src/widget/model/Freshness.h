#pragma once

#include "formats/Limits.h"
#include <QObject>

class Strings;

/// How old the shown limit readings are.
class Freshness final {
    Q_GADGET
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(bool fresh MEMBER fresh)
    Q_PROPERTY(QString tip READ tipText)

public:
    QString text;               ///< such as "2 min ago"; empty when nothing is known
    bool fresh = false;         ///< less than a quarter of an hour old
    std::optional<QString> tip; ///< with the clock time of the readings

    [[nodiscard]] QString tipText() const { return tip.value_or(QString()); }

    bool operator==(const Freshness &) const = default;
};

[[nodiscard]] Freshness freshness(
    const std::optional<Limits> &shown, TimePoint now, const Strings &strings);
