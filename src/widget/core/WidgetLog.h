#pragma once

#include <QString>

/// A small, self-trimming text log of problems and events, for people who look into a fault.
namespace WidgetLog {

/// Appends one line (local time stamp, a blank, the message) to Paths::log(); returns at once, from
/// any thread. Lines stand in the order of the calls. Nothing about the log can fail its caller; a
/// message whose file work failed is lost.
void write(const QString &message);

/// Waits until everything written so far is in the file.
void flush();

} // namespace WidgetLog
