#pragma once

#include <optional>
#include <QIcon>
#include <QString>

/// The tray icon: a ring that fills clockwise with the share of the first limit that is used.
///
/// A percentage that is not finite counts as no reading.
namespace StatusRing {

/// What tells one picture from another: the percentage as a whole number, "none" without a reading.
[[nodiscard]] QString key(const std::optional<double> &percent);

/// The ring, drawn for each size that trays ask for.
[[nodiscard]] QIcon icon(const std::optional<double> &percent);

} // namespace StatusRing
