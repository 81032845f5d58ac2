#pragma once

#include "indexer/Lineage.h"
#include "indexer/RolloutFile.h"

#include <map>
#include <utility>

namespace indexer {

/// What all files of a family tell of one response.
struct RolloutResponse {
    TextId thread = 0; // the oldest that has it
    RolloutSettings settings;
    TimePoint told {}; // when these were told
    TimePoint time {}; // the earliest that is told of it
    RolloutUsage usage;
};

/// Each response of a family once, in whatever order the files come.
class ResponseBook final {
public:
    ResponseBook(const Lineage &lineage, const TextPool &names);

    template <typename Visit> void forEach(Visit visit) const
    {
        for (const auto &[key, response] : m_responses) {
            visit(response);
        }
    }

    void add(const RolloutFile &file);

private:
    [[nodiscard]] bool precedes(const RolloutResponse &a, const RolloutResponse &b) const;

    const Lineage &m_lineage;
    const TextPool &m_names;
    /// By the thread that the family comes from and the response.
    std::map<std::pair<TextId, std::uint64_t>, RolloutResponse> m_responses;
};

} // namespace indexer
