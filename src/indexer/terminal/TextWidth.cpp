#include "indexer/terminal/TextWidth.h"

#include <fmt/format.h>

namespace indexer {

std::size_t widthOf(std::string_view text)
{
    // Padding to a width that every text has tells the width that the formatter sees.
    const std::size_t enough = 2 * text.size();
    return enough + text.size() - fmt::formatted_size("{:<{}}", text, enough);
}

std::string shortened(std::string_view text, std::size_t columns)
{
    if (widthOf(text) <= columns) {
        return std::string(text);
    }
    std::size_t used = 1; // by the sign that there was more
    std::size_t cut = 0;
    while (cut < text.size()) {
        std::size_t next = cut + 1;
        while (next < text.size() && (static_cast<unsigned char>(text[next]) & 0xC0U) == 0x80U) {
            ++next;
        }
        used += widthOf(text.substr(cut, next - cut));
        if (used > columns) {
            break;
        }
        cut = next;
    }
    return std::string(text.substr(0, cut)) + "…";
}

} // namespace indexer
