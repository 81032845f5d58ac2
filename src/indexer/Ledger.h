#pragma once

#include "indexer/TextPool.h"
#include "indexer/TranscriptLine.h"
#include "indexer/UsageRecord.h"

#include <unordered_map>
#include <vector>

namespace indexer {

/// Every answer once, however many lines and files tell of it and in whatever order they come.
class Ledger final {
public:
    explicit Ledger(TextPool &names);

    /// Calls `visit(record)` for each answer. A line without request id belongs to the answer of
    /// its message id; where that has several requests, to the first of them by name.
    template <typename Visit> void forEach(Visit visit) const
    {
        for (const std::uint32_t head : m_heads) {
            const std::uint32_t heir = head == none ? none : heirOf(head);
            for (std::uint32_t i = head; i != none; i = m_next[i]) {
                if (heir != none && m_records[i].request == 0) {
                    continue;
                }
                visit(i == heir ? withOrphan(i, head) : m_records[i]);
            }
        }
    }

    /// Takes up a line that states usage; false when the line has no identity at all.
    [[nodiscard]] bool add(const TranscriptLine &line, TimePoint time);

private:
    static constexpr std::uint32_t none = UINT32_MAX;

    [[nodiscard]] std::uint32_t heirOf(std::uint32_t head) const;
    [[nodiscard]] UsageRecord withOrphan(std::uint32_t heir, std::uint32_t head) const;
    [[nodiscard]] std::uint32_t indexOf(TextId key, TextId request) const;
    [[nodiscard]] bool precedes(const Told &a, const Told &b) const;
    void append(TextId key, const UsageRecord &record);
    void merge(UsageRecord &record, const UsageRecord &other) const;

    TextPool &m_names;
    TextPool m_keys;   // message ids and what stands in for them
    std::string m_key; // reused
    // All by number: the first record of each key, and the next one of the same key.
    std::vector<std::uint32_t> m_heads;
    std::vector<std::uint32_t> m_next;
    std::vector<UsageRecord> m_records;
    // The records behind the first of their key, by key and request; few messages have any.
    std::unordered_map<std::uint64_t, std::uint32_t> m_later;
};

} // namespace indexer
