#include "indexer/terminal/Printable.h"

#include <algorithm>
#include <array>

namespace indexer {

namespace {

/// U+2028 to U+202E and U+2066 to U+2069 break lines or turn what follows around; U+200E, U+200F
/// and U+061C are marks of the same kind.
constexpr std::array<std::string_view, 14> orders {"\u061C", "\u200E", "\u200F", "\u2028", "\u2029",
    "\u202A", "\u202B", "\u202C", "\u202D", "\u202E", "\u2066", "\u2067", "\u2068", "\u2069"};

/// How many bytes at the front of a text make a character that is obeyed instead of shown.
std::size_t orderAt(std::string_view text)
{
    const auto byte = static_cast<unsigned char>(text.front());
    if (byte < 0x20 || byte == 0x7F) {
        return 1;
    }
    // U+0080 to U+009F are C2 80 to C2 9F.
    if (byte == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0) {
        return 2;
    }
    const auto *const order = std::find_if(orders.begin(), orders.end(),
        [text](std::string_view each) { return text.starts_with(each); });
    return order == orders.end() ? 0 : order->size();
}

} // namespace

std::string printable(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const std::size_t size = orderAt(text);
        result += size > 0 ? '?' : text.front();
        text.remove_prefix(std::max<std::size_t>(size, 1));
    }
    return result;
}

} // namespace indexer
