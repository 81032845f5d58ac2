#pragma once

#include <string>
#include <string_view>

namespace usage {

/// A title from a JSON string (with its quotes), on one line and cut to a sensible length; empty
/// when nothing visible is in it.
[[nodiscard]] std::string tidyTitle(std::string_view token);

/// The same of a plain UTF-8 text.
[[nodiscard]] std::string tidyName(std::string_view text);

/// Whether a JSON string (with its quotes) in a user's line was written by the user, and not put
/// there by the assistant's own commands and reminders.
[[nodiscard]] bool isRealPrompt(std::string_view token);

/// The folder's own name out of a full path, of this system or of Windows.
[[nodiscard]] std::string_view folderName(std::string_view path);

} // namespace usage
