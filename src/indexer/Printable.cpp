#include "indexer/Printable.h"

namespace indexer {

std::string printable(std::string_view text)
{
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        // U+0080 to U+009F are C2 80 to C2 9F.
        const bool isHighControl =
            byte == 0xC2 && at + 1 < text.size() && static_cast<unsigned char>(text[at + 1]) < 0xA0;
        if (isHighControl) {
            ++at;
        }
        result += isHighControl || byte < 0x20 || byte == 0x7F ? '?' : text[at];
    }
    return result;
}

} // namespace indexer
