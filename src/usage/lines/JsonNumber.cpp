#include "usage/lines/JsonNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace usage {

namespace {

/// The largest count that every reader of JSON can hold exactly.
constexpr std::uint64_t largestCount = std::uint64_t {1} << 53U;

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::size_t leadingDigits(std::string_view text)
{
    const auto *end = std::find_if_not(text.begin(), text.end(), isDigit);
    return static_cast<std::size_t>(end - text.begin());
}

/// Removes the digits at the front; there has to be one.
bool takeDigits(std::string_view &text)
{
    const std::size_t digits = leadingDigits(text);
    text.remove_prefix(digits);
    return digits > 0;
}

} // namespace

bool isJsonNumber(std::string_view token)
{
    if (token.starts_with('-')) {
        token.remove_prefix(1);
    }
    if (token.starts_with('0') && token.size() > 1 && isDigit(token[1])) {
        return false;
    }
    if (!takeDigits(token)) {
        return false;
    }
    if (token.starts_with('.')) {
        token.remove_prefix(1);
        if (!takeDigits(token)) {
            return false;
        }
    }
    if (token.starts_with('e') || token.starts_with('E')) {
        token.remove_prefix(1);
        if (token.starts_with('+') || token.starts_with('-')) {
            token.remove_prefix(1);
        }
        if (!takeDigits(token)) {
            return false;
        }
    }
    return token.empty();
}

std::optional<std::uint64_t> tokenCount(std::string_view token)
{
    if (leadingDigits(token) == token.size()) {
        std::uint64_t count = 0;
        const auto result = std::from_chars(token.data(), token.data() + token.size(), count);
        return result.ec == std::errc {} && count <= largestCount ? std::optional(count)
                                                                  : std::nullopt;
    }
    // From the largest count on, other numbers are rounded to it.
    double value = 0;
    const auto result = std::from_chars(token.data(), token.data() + token.size(), value);
    if (result.ec != std::errc {} || value < 0 || value >= static_cast<double>(largestCount)
        || value != std::floor(value)) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(value);
}

} // namespace usage
