#include "usage/values/TextPool.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace usage {

namespace {

constexpr std::size_t firstChunk = 512;
constexpr std::size_t mostDoublings = 7;
constexpr std::size_t firstSlots = 16; // a power of two, as each later size

} // namespace

TextPool::TextPool()
    : m_texts {std::string_view {}}
    , m_slots(firstSlots)
{
}

TextId TextPool::add(std::string_view text)
{
    if (text.empty()) {
        return 0;
    }
    std::size_t slot = slotOf(text);
    if (m_slots[slot] != 0) {
        return m_slots[slot];
    }
    if (m_texts.size() * 3 > m_slots.size() * 2) {
        grow();
        slot = slotOf(text);
    }
    const auto id = static_cast<TextId>(m_texts.size());
    m_texts.push_back(keep(text));
    m_slots[slot] = id;
    return id;
}

/// The text's slot, or the free one where it belongs.
std::size_t TextPool::slotOf(std::string_view text) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = std::hash<std::string_view> {}(text)&mask;
    while (m_slots[slot] != 0 && m_texts[m_slots[slot]] != text) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

std::string_view TextPool::keep(std::string_view text)
{
    if (text.size() > m_room) {
        m_room = std::max(firstChunk << std::min(m_chunks.size(), mostDoublings), text.size());
        m_chunks.emplace_back(new char[m_room]);
        m_free = m_chunks.back().get();
    }
    std::memcpy(m_free, text.data(), text.size());
    const std::string_view kept(m_free, text.size());
    m_free += text.size();
    m_room -= text.size();
    return kept;
}

void TextPool::grow()
{
    m_slots.assign(m_slots.size() * 2, 0);
    for (TextId id = 1; id < m_texts.size(); ++id) {
        m_slots[slotOf(m_texts[id])] = id;
    }
}

} // namespace usage
