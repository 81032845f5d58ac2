#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace usage {

/// The number of a text in its pool; 0 is the empty text.
using TextId = std::uint32_t;

/// Keeps each text once and numbers them in the order of arrival.
class TextPool final {
public:
    TextPool();

    /// Empty also for a number that stands for nothing, as damaged files may hold.
    [[nodiscard]] std::string_view text(TextId id) const
    {
        return id < m_texts.size() ? m_texts[id] : std::string_view();
    }
    [[nodiscard]] std::size_t size() const { return m_texts.size(); }

    TextId add(std::string_view text);

private:
    [[nodiscard]] std::size_t slotOf(std::string_view text) const;
    [[nodiscard]] std::string_view keep(std::string_view text);
    void grow();

    std::vector<std::string_view> m_texts;
    std::vector<TextId> m_slots; // open addressing; 0 is a free slot
    std::vector<std::unique_ptr<char[]>> m_chunks;
    std::size_t m_room = 0; // left in the last chunk
    char *m_free = nullptr;
};

} // namespace usage
