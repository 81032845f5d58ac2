#pragma once

#include "usage/codex/CopyDetection.h"
#include "usage/codex/Lineage.h"

#include <string>
#include <tuple>
#include <unordered_map>

namespace usage {

/// What threads are called by their own files: the newest name, or else the first prompt.
class ThreadTitles final {
public:
    explicit ThreadTitles(const Lineage &lineage);

    /// Empty when there is none.
    [[nodiscard]] std::string title(TextId thread) const;
    [[nodiscard]] std::string prompt(TextId thread) const;

    void addName(const FamilyMember &file);
    /// To be called for one file of each thread: an older state of it knows less of what is a copy.
    void addPrompts(const FamilyMember &file, const OwnPart &part);

private:
    using Name = std::pair<TimePoint, std::string>;
    /// Whether it may be a copy, and when it was written; the least is the best.
    using Prompt = std::tuple<bool, TimePoint, std::string>;

    void addPrompt(TextId thread, bool mayBeCopy, const RolloutPrompt &prompt);

    const Lineage &m_lineage;
    std::unordered_map<TextId, Name> m_names;
    std::unordered_map<TextId, Prompt> m_prompts;
};

} // namespace usage
