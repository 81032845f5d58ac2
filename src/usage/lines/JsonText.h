#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace usage {

/// Hands out the characters of a JSON string, escapes resolved; half a surrogate pair, which
/// assistants do write when they cut a text short, becomes U+FFFD.
class JsonText final {
public:
    /// `token` is the string as it stands in the file, with its quotes.
    explicit JsonText(std::string_view token);

    [[nodiscard]] std::optional<char32_t> next();

private:
    [[nodiscard]] char32_t escaped();
    [[nodiscard]] char32_t unit();

    std::string_view m_rest;
};

/// Whether every escape in a JSON string (with its quotes) is one that JSON knows.
[[nodiscard]] bool escapesAreSound(std::string_view token);

/// Takes the first character off a sound UTF-8 text that is not empty.
[[nodiscard]] char32_t takeCharacter(std::string_view &text);

void appendUtf8(std::string &text, char32_t character);

} // namespace usage
