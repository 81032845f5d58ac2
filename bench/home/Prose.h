#pragma once

#include "home/Dice.h"

#include <string>
#include <string_view>
#include <vector>

/// What people, programs and assistants write, as it stands between the quotes of a JSON string.
class Prose final {
public:
    Prose();

    /// About so many bytes of text and source code: escapes, a few letters beyond ASCII.
    [[nodiscard]] std::string_view text(Dice &dice, std::size_t bytes) const;
    /// So many bytes of an encoded picture or of something encrypted.
    [[nodiscard]] std::string_view encoded(Dice &dice, std::size_t bytes) const;

private:
    [[nodiscard]] std::size_t startOfRowFrom(std::size_t place) const;

    std::string m_text;
    std::vector<std::size_t> m_rows; // where they begin
    std::string m_encoded;
};
