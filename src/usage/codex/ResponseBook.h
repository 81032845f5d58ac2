#pragma once

#include "usage/codex/FamilyMember.h"
#include "usage/codex/Lineage.h"

#include <compare>
#include <vector>

namespace usage {

/// What all files of a family tell of one response.
struct RolloutResponse {
    TextId thread = 0; // the oldest that has it
    RolloutSettings settings;
    TimePoint told {}; // when these were told
    TimePoint time {}; // the earliest that is told of it
    RolloutUsage usage;
};

/// Each response of a family once, whatever the order of the files. These have to stay where they
/// are: nothing of them is copied, as there may be very many.
class ResponseBook final {
public:
    ResponseBook(
        const std::vector<FamilyMember> &files, const Lineage &lineage, const TextPool &names);

    template <typename Visit> void forEach(Visit visit) const
    {
        for (auto first = m_tellings.begin(); first != m_tellings.end();) {
            RolloutResponse held = response(*first);
            auto next = first + 1;
            for (; next != m_tellings.end() && next->isOfSame(*first); ++next) {
                merge(held, response(*next));
            }
            visit(held);
            first = next;
        }
    }

private:
    /// That a record of a file tells of a response.
    struct Telling {
        TextId root = 0; // the thread that the family comes from
        std::uint64_t response = 0;
        std::uint32_t file = 0;
        std::uint32_t record = 0;

        [[nodiscard]] bool isOfSame(const Telling &other) const
        {
            return root == other.root && response == other.response;
        }
        [[nodiscard]] auto operator<=>(const Telling &) const = default;
    };

    [[nodiscard]] RolloutResponse response(const Telling &telling) const;
    void merge(RolloutResponse &held, RolloutResponse told) const;
    [[nodiscard]] bool precedes(const RolloutResponse &a, const RolloutResponse &b) const;

    const std::vector<FamilyMember> &m_files;
    const Lineage &m_lineage;
    const TextPool &m_names;
    std::vector<Telling> m_tellings;
};

} // namespace usage
