#include "usage/lines/JsonText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace usage {

namespace {

constexpr char32_t replacement = 0xFFFD;
/// Which characters may follow a backslash on their own. Source code, as it stands in
/// transcripts, is full of them.
constexpr auto shortEscapes = [] {
    std::array<bool, 256> table {};
    for (const char c : std::string_view("\"\\/bfnrt")) {
        table[static_cast<unsigned char>(c)] = true;
    }
    return table;
}();

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr bool isHexDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

} // namespace

JsonText::JsonText(std::string_view token)
    : m_rest(token.substr(1, token.size() - 2))
{
}

std::optional<char32_t> JsonText::next()
{
    if (m_rest.empty()) {
        return std::nullopt;
    }
    if (m_rest.front() == '\\') {
        m_rest.remove_prefix(1);
        return escaped();
    }
    return takeCharacter(m_rest);
}

/// What stands behind a backslash.
char32_t JsonText::escaped()
{
    const char kind = m_rest.front();
    m_rest.remove_prefix(1);
    switch (kind) {
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'u':
        break;
    default:
        return static_cast<unsigned char>(kind);
    }
    const char32_t high = unit();
    if (high < 0xD800 || high > 0xDFFF) {
        return high;
    }
    const std::string_view behind = m_rest;
    if (high < 0xDC00 && m_rest.starts_with("\\u")) {
        m_rest.remove_prefix(2);
        const char32_t low = unit();
        if (low >= 0xDC00 && low <= 0xDFFF) {
            return 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00);
        }
        m_rest = behind;
    }
    return replacement;
}

/// The four hexadecimal digits of an escape.
char32_t JsonText::unit()
{
    std::uint32_t value = 0;
    std::from_chars(m_rest.data(), m_rest.data() + 4, value, 16);
    m_rest.remove_prefix(4);
    return value;
}

bool escapesAreSound(std::string_view token)
{
    const char *at = token.data();
    const char *const end = at + token.size();
    for (;;) {
        at = static_cast<const char *>(std::memchr(at, '\\', static_cast<std::size_t>(end - at)));
        if (at == nullptr) {
            return true;
        }
        // The closing quote follows every escape, so one more character can always be read.
        const char kind = at[1];
        if (kind == 'u') {
            if (end - at < 7 || !std::all_of(at + 2, at + 6, isHexDigit)) {
                return false;
            }
        } else if (!shortEscapes[static_cast<unsigned char>(kind)]) {
            return false;
        }
        at += 2;
    }
}

char32_t takeCharacter(std::string_view &text)
{
    const auto first = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (first < 0x80) {
        return first;
    }
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    char32_t character = first & (0x3FU >> static_cast<unsigned>(more));
    for (int i = 0; i < more && !text.empty(); ++i) {
        character = (character << 6U) | (static_cast<unsigned char>(text.front()) & 0x3FU);
        text.remove_prefix(1);
    }
    return character;
}

void appendUtf8(std::string &text, char32_t character)
{
    const auto tail = [character](unsigned shift) {
        return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0U | (character >> 6U));
        text += tail(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0U | (character >> 12U));
        (text += tail(6)) += tail(0);
    } else {
        text += static_cast<char>(0xF0U | (character >> 18U));
        ((text += tail(12)) += tail(6)) += tail(0);
    }
}

} // namespace usage
