#include "indexer/OwnParts.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <unordered_set>

namespace indexer {

namespace {

using Counters = std::vector<RolloutCounter>;

/// How many counters two files have in common at their beginnings.
std::size_t commonFront(const Counters &a, const Counters &b)
{
    return static_cast<std::size_t>(
        std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
            [](const RolloutCounter &x, const RolloutCounter &y) { return x.total == y.total; })
            .first
        - a.begin());
}

/// Goes through the files, each after those that it may have copied from.
class Comparing final {
public:
    Comparing(const std::vector<RolloutFile> &files, const Lineage &lineage)
        : m_lineage(lineage)
    {
        for (const RolloutFile &file : files) {
            m_present.insert(file.thread);
        }
    }

    [[nodiscard]] OwnPart add(const RolloutFile &file);

private:
    [[nodiscard]] std::size_t behindTold(const RolloutFile &file) const;
    [[nodiscard]] std::size_t behindShared(const RolloutFile &file);

    const Lineage &m_lineage;
    std::unordered_set<TextId> m_present;
    std::vector<TextId> m_ancestors; // of the file at hand
    /// The threads whose own totals these are.
    std::map<RolloutUsage, std::vector<TextId>> m_holders;
    /// Files by a lost thread that they come from and their first total.
    std::map<std::pair<TextId, RolloutUsage>, std::vector<const RolloutFile *>> m_heirs;
};

OwnPart Comparing::add(const RolloutFile &file)
{
    m_ancestors = m_lineage.ancestorsOf(file.thread);
    const Counters &counters = file.rollout.counters;
    if (m_ancestors.empty() || counters.empty()) {
        for (const RolloutCounter &counter : counters) {
            m_holders[counter.total].push_back(file.thread);
        }
        return {0, m_ancestors.empty() || m_present.contains(m_ancestors.front())};
    }
    const std::size_t begin =
        std::max({behindTold(file), behindShared(file), file.rollout.countersBeforeOthers});
    for (std::size_t i = begin; i < counters.size(); ++i) {
        m_holders[counters[i].total].push_back(file.thread);
    }
    return {begin, begin > 0 || m_present.contains(m_ancestors.front())};
}

/// A total of a thread that it comes from is a copy, and so is all that stands in front of it.
std::size_t Comparing::behindTold(const RolloutFile &file) const
{
    const std::unordered_set<TextId> ancestors(m_ancestors.begin(), m_ancestors.end());
    const Counters &counters = file.rollout.counters;
    const auto isCopy = [&](const RolloutCounter &counter) {
        const auto holders = m_holders.find(counter.total);
        return holders != m_holders.end()
            && std::any_of(holders->second.begin(), holders->second.end(),
                [&](TextId holder) { return ancestors.contains(holder); });
    };
    return static_cast<std::size_t>(
        counters.rend() - std::find_if(counters.rbegin(), counters.rend(), isCopy));
}

/// Where a thread that it comes from has no file, an older one of its kin stands in: both begin
/// with the same copies.
std::size_t Comparing::behindShared(const RolloutFile &file)
{
    const Counters &counters = file.rollout.counters;
    std::size_t shared = 0;
    for (const TextId ancestor : m_ancestors) {
        if (m_present.contains(ancestor)) {
            continue;
        }
        auto &heirs = m_heirs[{ancestor, counters.front().total}];
        for (const RolloutFile *heir : heirs) {
            if (heir->thread != file.thread) {
                shared = std::max(shared, commonFront(counters, heir->rollout.counters));
            }
        }
        heirs.push_back(&file);
    }
    return shared;
}

} // namespace

std::vector<OwnPart> ownParts(const std::vector<RolloutFile> &files, const Lineage &lineage)
{
    std::vector<std::size_t> order(files.size());
    std::iota(order.begin(), order.end(), std::size_t {0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return lineage.ageOf(files[a].thread) < lineage.ageOf(files[b].thread);
    });
    std::vector<OwnPart> parts(files.size());
    Comparing comparing(files, lineage);
    for (const std::size_t i : order) {
        parts[i] = comparing.add(files[i]);
    }
    return parts;
}

} // namespace indexer
