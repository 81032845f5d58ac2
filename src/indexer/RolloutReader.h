#pragma once

#include "indexer/RolloutBook.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace indexer {

/// Takes up one rollout line by line; what a line means depends on those before it.
class RolloutReader final {
public:
    RolloutReader(RolloutBook &book, TextPool &names);

    /// `stem` is the file's name without its endings, whose last part is the thread's id.
    void begin(std::string_view stem);
    /// Only a line with a time can tell of usage.
    void add(const RolloutLine &line, std::optional<TimePoint> time);
    void end();

private:
    void addMeta(const RolloutLine &line, std::optional<TimePoint> time);
    void addTurn(const RolloutLine &line);
    void change(const RolloutLine &line);
    void addTimed(const RolloutLine &line, TimePoint time);
    void addRecord(const RolloutLine &line, TimePoint time);
    void addCounter(const RolloutLine &line, TimePoint time);
    void addLimits(const RolloutLimits &limits, TimePoint time);

    RolloutBook &m_book;
    TextPool &m_names;
    Rollout m_rollout;
    std::unordered_set<TextId> m_told; // threads whose front the file holds
    bool m_isOrphanSubagent = false;
    TextId m_orphan = 0; // the last of these, if it does not say what it comes from
    RolloutSettings m_settings;
    std::unordered_map<TextId, RolloutSettings> m_turns;
    TextId m_turn = 0;
    bool m_hasOwnRecord = false;
    bool m_hasPrompt = false;
};

} // namespace indexer
