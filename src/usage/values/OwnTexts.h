#pragma once

#include "usage/values/TextPool.h"

#include <string>
#include <string_view>
#include <vector>

namespace usage {

/// The texts of one file, mostly few, each once and numbered in the order of arrival; 0 is the
/// empty text. Unlike a TextPool it is small, and can be copied.
class OwnTexts final {
public:
    [[nodiscard]] bool operator==(const OwnTexts &) const = default;
    [[nodiscard]] std::string_view text(TextId id) const
    {
        return id == 0 ? std::string_view() : m_texts[id - 1];
    }
    /// How many numbers there are, that of the empty text included.
    [[nodiscard]] std::size_t size() const { return m_texts.size() + 1; }

    TextId add(std::string_view text);

private:
    [[nodiscard]] std::size_t slotOf(std::string_view text) const;

    std::vector<std::string> m_texts;
    std::vector<TextId> m_slots; // where a text is found by its hash; 0 is a free slot
};

} // namespace usage
