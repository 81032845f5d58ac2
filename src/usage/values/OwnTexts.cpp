#include "usage/values/OwnTexts.h"

#include <functional>

namespace usage {

TextId OwnTexts::add(std::string_view text)
{
    constexpr std::size_t fewest = 8; // slots; a power of two, as each later size
    if (text.empty()) {
        return 0;
    }
    if (m_texts.size() * 2 >= m_slots.size()) {
        m_slots.assign(m_slots.empty() ? fewest : m_slots.size() * 2, 0);
        for (TextId id = 1; id <= m_texts.size(); ++id) {
            m_slots[slotOf(m_texts[id - 1])] = id;
        }
    }
    TextId &held = m_slots[slotOf(text)];
    if (held == 0) {
        m_texts.emplace_back(text);
        held = static_cast<TextId>(m_texts.size());
    }
    return held;
}

/// The text's slot, or the free one where it belongs.
std::size_t OwnTexts::slotOf(std::string_view text) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = std::hash<std::string_view> {}(text)&mask;
    while (m_slots[slot] != 0 && m_texts[m_slots[slot] - 1] != text) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

} // namespace usage
