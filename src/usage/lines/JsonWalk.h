#pragma once

#include "usage/lines/JsonText.h"

#include <simdjson.h>
#include <string_view>
#include <utility>

namespace usage {

/// The characters of a value that is neither object nor array, as they stand in the file. The value
/// itself is still to be taken; before it turned out sound, nothing is known of them.
[[nodiscard]] inline std::string_view scalarToken(simdjson::ondemand::value &value)
{
    constexpr std::string_view blanks = " \t\r\n";
    std::string_view token = value.raw_json_token();
    while (!token.empty() && blanks.find(token.back()) != std::string_view::npos) {
        token.remove_suffix(1);
    }
    return token;
}

/// Takes a value and tells whether it is sound JSON through and through. The parser itself looks
/// only at what is asked for; a damaged line must not count because the damage lies elsewhere.
[[nodiscard]] bool isSound(simdjson::ondemand::value value, int depth = 0);

/// Calls `take(key, value)` for each field; false as soon as that or the JSON is not sound. Keys
/// are as they stand in the file: a key with escapes is none that we know.
template <typename Take>
[[nodiscard]] bool eachField(
    simdjson::simdjson_result<simdjson::ondemand::object> started, Take take)
{
    simdjson::ondemand::object object;
    // NOLINTNEXTLINE(performance-move-const-arg): only a result that is moved can be asked
    if (std::move(started).get(object) != simdjson::SUCCESS) {
        return false;
    }
    for (auto field : object) {
        simdjson::ondemand::raw_json_string raw;
        simdjson::ondemand::value inner;
        if (field.key().get(raw) != simdjson::SUCCESS
            || field.value().get(inner) != simdjson::SUCCESS) {
            return false;
        }
        const char *end = raw.raw();
        while (*end != '"') {
            end += *end == '\\' ? 2 : 1;
        }
        const std::string_view key(raw.raw(), static_cast<std::size_t>(end - raw.raw()));
        if (!escapesAreSound({key.data() - 1, key.size() + 2}) || !take(key, inner)) {
            return false;
        }
    }
    return true;
}

/// Calls `take(value)` for each element; false as soon as that or the JSON is not sound.
template <typename Take>
[[nodiscard]] bool eachElement(
    simdjson::simdjson_result<simdjson::ondemand::array> started, Take take)
{
    simdjson::ondemand::array array;
    // NOLINTNEXTLINE(performance-move-const-arg): only a result that is moved can be asked
    if (std::move(started).get(array) != simdjson::SUCCESS) {
        return false;
    }
    for (auto element : array) {
        simdjson::ondemand::value inner;
        if (element.get(inner) != simdjson::SUCCESS || !take(inner)) {
            return false;
        }
    }
    return true;
}

} // namespace usage
