#include "usage/codex/ThreadTitles.h"

#include <algorithm>

namespace usage {

ThreadTitles::ThreadTitles(const Lineage &lineage)
    : m_lineage(lineage)
{
}

std::string ThreadTitles::title(TextId thread) const
{
    const auto name = m_names.find(thread);
    if (name != m_names.end() && !name->second.second.empty()) {
        return name->second.second;
    }
    return prompt(thread);
}

std::string ThreadTitles::prompt(TextId thread) const
{
    const auto prompt = m_prompts.find(thread);
    return prompt == m_prompts.end() ? std::string() : std::get<std::string>(prompt->second);
}

void ThreadTitles::addName(const FamilyMember &file)
{
    const Name name {file.rollout.name.time, file.rollout.name.text};
    Name &newest = m_names.emplace(file.thread, name).first->second;
    newest = std::max(newest, name);
}

void ThreadTitles::addPrompts(const FamilyMember &file, const OwnPart &part)
{
    const Rollout &rollout = file.rollout;
    const bool hasParent = m_lineage.hasParent(file.thread);
    if (hasParent && (part.isKnown || rollout.hasCopiedPrompts)) {
        const auto own = std::find_if(rollout.laterPrompts.begin(), rollout.laterPrompts.end(),
            [&](const RolloutPrompt &each) { return each.counters >= part.begin; });
        if (own != rollout.laterPrompts.end()) {
            addPrompt(file.thread, false, *own);
        }
    }
    if (rollout.prompt) {
        addPrompt(file.thread, hasParent, *rollout.prompt);
    }
}

void ThreadTitles::addPrompt(TextId thread, bool mayBeCopy, const RolloutPrompt &prompt)
{
    const Prompt told {mayBeCopy, prompt.time, prompt.text};
    Prompt &best = m_prompts.emplace(thread, told).first->second;
    best = std::min(best, told);
}

} // namespace usage
