#pragma once

#include <QList>
#include <QString>

/// A part of a date pattern: a field, told by its letter and how often that stands there, or a text
/// as it is, which has no letter.
struct DatePart {
    char16_t letter = 0;
    qsizetype count = 0;
    QString text;

    bool operator==(const DatePart &) const = default;
};

/// The parts of a pattern in the Unicode notation, without the widths of fields being looked at.
/// Texts stand in single quotes, or are no letters from A to Z; two single quotes are one.
[[nodiscard]] QList<DatePart> datePattern(const QString &pattern);
