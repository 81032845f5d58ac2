#include "usage/lines/Title.h"

#include "usage/lines/JsonText.h"

#include <algorithm>
#include <array>
#include <optional>

namespace usage {

namespace {

constexpr std::size_t longestTitle = 200;

bool isBlank(char32_t c)
{
    return c <= 0x20 || (c >= 0x7F && c <= 0xA0) || c == 0x1680 || (c >= 0x2000 && c <= 0x200B)
        || (c >= 0x2028 && c <= 0x202F) || (c >= 0x2060 && c <= 0x206F) || c == 0x3000
        || c == 0xFEFF;
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Characters without a look of their own that change the direction or the breaks of others.
bool isInvisible(char32_t c)
{
    return c == 0xAD || c == 0x61C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E)
        || (c >= 0x2066 && c <= 0x2069);
}

/// What begins a text that the assistant's own program put into the user's lines.
constexpr std::array<std::string_view, 15> insertions {"<command-", "<local-command-", "<bash-",
    "<system-reminder", "<ide_", "<task-notification", "<user-", "Caveat: The messages below",
    "[Request interrupted", "<environment_context", "<user_", "<permissions ", "<turn_aborted",
    "<INSTRUCTIONS", "# AGENTS.md"};

/// The first visible characters, as far as they are plain ASCII.
std::string opening(std::string_view token)
{
    constexpr std::size_t enough = 32; // more than the longest insertion
    std::string text;
    JsonText characters(token);
    while (const auto c = characters.next()) {
        if (text.empty() && (isBlank(*c) || isInvisible(*c))) {
            continue;
        }
        if (*c >= 0x80 || text.size() == enough) {
            return text.empty() ? "?" : text;
        }
        text += static_cast<char>(*c);
    }
    return text;
}

/// The characters that `next()` hands out on one line, without blanks at the ends and in rows.
template <typename Next> std::string tidied(Next next)
{
    std::string title;
    std::size_t length = 0;
    bool gap = false;
    while (const auto c = next()) {
        if (isInvisible(*c)) {
            continue;
        }
        if (isBlank(*c)) {
            gap = length > 0;
            continue;
        }
        const std::size_t wanted = gap ? 2 : 1;
        if (length + wanted > longestTitle) {
            break;
        }
        if (gap) {
            title += ' ';
        }
        appendUtf8(title, *c);
        length += wanted;
        gap = false;
    }
    return title;
}

} // namespace

std::string tidyTitle(std::string_view token)
{
    JsonText characters(token);
    return tidied([&characters] { return characters.next(); });
}

std::string tidyName(std::string_view text)
{
    return tidied([&text]() -> std::optional<char32_t> {
        return text.empty() ? std::nullopt : std::optional(takeCharacter(text));
    });
}

bool isRealPrompt(std::string_view token)
{
    const std::string text = opening(token);
    return !text.empty()
        && std::none_of(insertions.begin(), insertions.end(),
            [&text](std::string_view front) { return text.starts_with(front); });
}

std::string_view folderName(std::string_view path)
{
    const bool windows =
        path.starts_with("\\\\") || (path.size() > 1 && isLetter(path[0]) && path[1] == ':');
    const std::string_view separators = windows ? "/\\" : "/";
    while (path.size() > 1 && separators.find(path.back()) != std::string_view::npos) {
        path.remove_suffix(1);
    }
    const std::size_t last = path.find_last_of(separators);
    return last == std::string_view::npos || path.size() == 1 ? path : path.substr(last + 1);
}

} // namespace usage
