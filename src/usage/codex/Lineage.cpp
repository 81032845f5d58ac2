#include "usage/codex/Lineage.h"

#include <algorithm>
#include <tuple>
#include <unordered_set>

namespace usage {

Lineage::Lineage(const TextPool &names)
    : m_names(names)
{
}

bool Lineage::hasParent(TextId thread) const
{
    return m_parents.contains(thread);
}

TextId Lineage::rootOf(TextId thread) const
{
    return wayOf(thread).last;
}

Lineage::Age Lineage::ageOf(TextId thread) const
{
    const auto created = m_created.find(thread);
    return {wayOf(thread).steps, created == m_created.end() ? TimePoint::min() : created->second,
        m_names.text(thread)};
}

/// Damaged files may lead in a circle, which is gone through once.
std::vector<TextId> Lineage::ancestorsOf(TextId thread) const
{
    std::vector<TextId> ancestors;
    std::unordered_set<TextId> seen {thread};
    for (auto found = m_parents.find(thread);
         found != m_parents.end() && seen.insert(found->second.thread).second;
         found = m_parents.find(ancestors.back())) {
        ancestors.push_back(found->second.thread);
    }
    return ancestors;
}

/// Goes up to the last of the parents and tells how many there were. Of a circle the first thread
/// by name is taken.
Lineage::Way Lineage::walk(TextId thread) const
{
    std::vector<TextId> path = ancestorsOf(thread);
    path.insert(path.begin(), thread);
    const auto next = m_parents.find(path.back());
    if (next == m_parents.end()) {
        return {path.back(), path.size() - 1};
    }
    const auto circle = std::find(path.begin(), path.end(), next->second.thread);
    const TextId first = *std::min_element(circle, path.end(),
        [this](TextId a, TextId b) { return m_names.text(a) < m_names.text(b); });
    return {first, path.size() - 1};
}

const Lineage::Way &Lineage::wayOf(TextId thread) const
{
    const auto [known, isNew] = m_ways.try_emplace(thread);
    if (isNew) {
        known->second = walk(thread);
    }
    return known->second;
}

TextId Lineage::sessionOf(TextId thread) const
{
    TextId session = thread;
    std::size_t steps = 0;
    for (auto found = m_parents.find(session);
         found != m_parents.end() && found->second.isSubagent && steps <= m_parents.size();
         found = m_parents.find(session)) {
        session = found->second.thread;
        ++steps;
    }
    return steps > m_parents.size() ? rootOf(thread) : session;
}

void Lineage::addThread(TextId thread, TimePoint created)
{
    const auto [known, isNew] = m_created.emplace(thread, created);
    known->second = std::min(known->second, created);
}

void Lineage::addParent(TextId thread, TextId parent, bool isSubagent, bool isCopy)
{
    if (thread == 0 || parent == 0 || thread == parent) {
        return;
    }
    m_ways.clear();
    const Parent told {parent, isSubagent, isCopy};
    const auto [known, isNew] = m_parents.emplace(thread, told);
    const auto rank = [this](const Parent &each) {
        return std::make_tuple(each.isCopy, m_names.text(each.thread), !each.isSubagent);
    };
    if (rank(told) < rank(known->second)) {
        known->second = told;
    }
}

} // namespace usage
