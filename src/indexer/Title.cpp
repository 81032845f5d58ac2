#include "indexer/Title.h"

#include "indexer/JsonText.h"

#include <algorithm>
#include <array>

namespace indexer {

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

/// The first visible characters, as far as they are plain ASCII.
std::string opening(std::string_view token)
{
    constexpr std::size_t enough = 24;
    std::string text;
    JsonText characters(token);
    while (const auto c = characters.next()) {
        if (isBlank(*c) && text.empty()) {
            continue;
        }
        if (*c >= 0x80 || text.size() == enough) {
            return text.empty() ? "?" : text;
        }
        text += static_cast<char>(*c);
    }
    return text;
}

} // namespace

std::string tidyTitle(std::string_view token)
{
    std::string title;
    std::size_t length = 0;
    bool gap = false;
    JsonText characters(token);
    while (const auto c = characters.next()) {
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

bool isRealPrompt(std::string_view token)
{
    const std::string text = opening(token);
    if (text.empty() || text.starts_with("Caveat:") || text.starts_with("[Request interrupted")) {
        return false;
    }
    return !(text.size() > 1 && text[0] == '<' && (isLetter(text[1]) || text[1] == '/'));
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

} // namespace indexer
