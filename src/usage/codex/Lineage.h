#pragma once

#include "formats/TimeStamp.h"
#include "usage/values/TextPool.h"

#include <compare>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace usage {

/// Which thread of Codex comes from which other.
class Lineage final {
public:
    /// Orders the threads of one lineage by age: nobody is older than those it comes from.
    struct Age {
        std::size_t generation = 0;
        TimePoint created {};
        std::string_view name;

        [[nodiscard]] auto operator<=>(const Age &) const = default;
    };

    explicit Lineage(const TextPool &names);

    [[nodiscard]] bool hasParent(TextId thread) const;
    /// The threads that it comes from, the nearest first.
    [[nodiscard]] std::vector<TextId> ancestorsOf(TextId thread) const;
    /// The thread that a whole family comes from, whether or not its file is still there.
    [[nodiscard]] TextId rootOf(TextId thread) const;
    [[nodiscard]] Age ageOf(TextId thread) const;
    /// The thread that the user worked in: a subagent works in that of its parent.
    [[nodiscard]] TextId sessionOf(TextId thread) const;

    void addThread(TextId thread, TimePoint created);
    /// What a thread's own file says goes before what copies of its front say elsewhere.
    void addParent(TextId thread, TextId parent, bool isSubagent, bool isCopy);

private:
    struct Parent {
        TextId thread = 0;
        bool isSubagent = false;
        bool isCopy = false;
    };

    struct Way {
        TextId last = 0;
        std::size_t steps = 0;
    };

    [[nodiscard]] const Way &wayOf(TextId thread) const;
    [[nodiscard]] Way walk(TextId thread) const;

    const TextPool &m_names;
    std::unordered_map<TextId, Parent> m_parents;
    std::unordered_map<TextId, TimePoint> m_created;
    mutable std::unordered_map<TextId, Way> m_ways; // until another parent is known
};

} // namespace usage
