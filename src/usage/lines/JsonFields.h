#pragma once

#include "usage/lines/JsonWalk.h"

#include <array>
#include <deque>
#include <string>

namespace usage {

[[nodiscard]] inline bool isType(
    simdjson::ondemand::value &value, simdjson::ondemand::json_type wanted)
{
    simdjson::ondemand::json_type type {};
    return value.type().get(type) == simdjson::SUCCESS && type == wanted;
}

/// Keys of a record and the fields that take their values.
template <typename Record, typename Field, std::size_t N>
using FieldTable = std::array<std::pair<std::string_view, Field Record::*>, N>;

template <typename Record, typename Field, std::size_t N>
[[nodiscard]] Field *find(
    const FieldTable<Record, Field, N> &fields, std::string_view key, Record &record)
{
    for (const auto &[name, field] : fields) {
        if (name == key) {
            return &(record.*field);
        }
    }
    return nullptr;
}

/// Takes single values of one line. Each taking tells whether the value was sound JSON.
class JsonFields final {
public:
    using Value = simdjson::ondemand::value;

    /// Whether a number of the line was one that no count can be.
    [[nodiscard]] bool hasImpossibleNumbers() const { return m_hasImpossibleNumbers; }

    /// Forgets the line so far; the texts taken from it with escapes in them end here.
    void restart();
    /// A string without its quotes; anything but a string tells nothing.
    [[nodiscard]] bool text(Value value, std::string_view &target);
    /// A moment as it stands there: a string without its quotes, or a number.
    [[nodiscard]] bool moment(Value value, std::string_view &target);
    /// A number of tokens, also one that is written as a text; null tells nothing, and anything
    /// else is no count.
    [[nodiscard]] bool count(Value value, std::uint64_t &target);

private:
    std::deque<std::string> m_unescaped; // the few texts of the line that hold escapes
    bool m_hasImpossibleNumbers = false;
};

} // namespace usage
