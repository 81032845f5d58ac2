#include "indexer/OwnTexts.h"

#include <algorithm>

namespace indexer {

TextId OwnTexts::add(std::string_view text)
{
    if (text.empty()) {
        return 0;
    }
    // What came last is asked for most.
    const auto found = std::find(m_texts.rbegin(), m_texts.rend(), text);
    if (found == m_texts.rend()) {
        m_texts.emplace_back(text);
        return static_cast<TextId>(m_texts.size());
    }
    return static_cast<TextId>(m_texts.rend() - found);
}

} // namespace indexer
