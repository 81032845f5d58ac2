#pragma once

#include "formats/Reading.h"
#include "widget/views/theme/Palette.h"
#include <QString>

class Strings;

/// What one row of the limits card is drawn from.
struct RowState {
    QString percentText = QStringLiteral("—"); ///< such as "42%"
    QColor percentColor = Palette::tertiary();
    double fill = 0;               ///< share of the track, 0…1
    std::optional<QColor> tone;    ///< nothing when nothing is known
    std::optional<double> pace;    ///< share of the window's time gone by, 0…1
    QString note;                  ///< when it resets, or what is the matter
    std::optional<QString> runout; ///< that it is used up, or will be before it resets
    QColor runoutColor = Palette::orange();
    std::optional<double> value; ///< the used percentage

    bool operator==(const RowState &) const = default;
};

/// The row of a reading, as seen at `now`, of a window of this length. A percentage is finite.
[[nodiscard]] RowState rowState(
    const std::optional<Reading> &reading, Seconds length, TimePoint now, const Strings &strings);
