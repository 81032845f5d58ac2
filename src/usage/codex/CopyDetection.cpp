#include "usage/codex/CopyDetection.h"

#include "usage/codex/RolloutPacking.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>
#include <unordered_set>

namespace usage {

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

/// How many counters there are up to the last that is told elsewhere.
template <typename IsTold> std::size_t behindLast(const Counters &counters, IsTold isTold)
{
    return static_cast<std::size_t>(counters.rend()
        - std::find_if(counters.rbegin(), counters.rend(),
            [&](const RolloutCounter &each) { return isTold(each.total); }));
}

/// Goes through the files, each after those that it may have copied from.
class Comparing final {
public:
    Comparing(const std::vector<FamilyMember> &files, const Lineage &lineage);

    [[nodiscard]] OwnPart add(const FamilyMember &file);

private:
    using Threads = std::vector<TextId>;

    /// What a file certainly copied, and from whom.
    struct Copied {
        TextId thread = 0;
        std::size_t counters = 0;
    };
    struct Copy {
        TextId thread = 0;
        bool isTold = false; // by a record, or it is counted
    };

    [[nodiscard]] Copied copiedBy(const FamilyMember &file) const;
    [[nodiscard]] bool isOfAncestor(const RolloutUsage &total) const;
    [[nodiscard]] std::size_t behindShared(const FamilyMember &file);
    void addCopies(const FamilyMember &file, OwnPart &part);
    [[nodiscard]] bool isHeldByAncestor(const RolloutUsage &total) const;
    [[nodiscard]] Copy &copyOf(const RolloutUsage &total, TextId thread);

    const Lineage &m_lineage;
    bool m_hasOthers; // for a file to be compared with
    std::unordered_set<TextId> m_present;
    Threads m_ancestors;                     // of the file at hand
    std::unordered_set<TextId> m_isAncestor; // with those of whom it copied
    /// The threads whose own totals these are.
    std::map<RolloutUsage, Threads> m_holders;
    /// And those that they were copied from, whether or not these have files.
    std::map<RolloutUsage, std::vector<Copy>> m_copies;
    /// Files by a lost thread that they come from and their first total.
    std::map<std::pair<TextId, RolloutUsage>, std::vector<const FamilyMember *>> m_heirs;
};

Comparing::Comparing(const std::vector<FamilyMember> &files, const Lineage &lineage)
    : m_lineage(lineage)
    , m_hasOthers(files.size() > 1)
{
    for (const FamilyMember &file : files) {
        m_present.insert(file.thread);
    }
    for (const FamilyMember &file : files) {
        const auto [thread, end] = copiedBy(file);
        for (std::size_t i = 0; i < end; ++i) {
            const RolloutCounter &counter = file.rollout.counters[i];
            Copy &copy = copyOf(counter.total, thread);
            copy.isTold = copy.isTold || file.rollout.hasRecordOf(i);
        }
    }
}

/// Records tell of copies. So do, where a thread's parent is lost, records of its own: all of its
/// responses have one then, so that what stands before them is not its own.
Comparing::Copied Comparing::copiedBy(const FamilyMember &file) const
{
    const Rollout &rollout = file.rollout;
    if (rollout.copies.thread != 0) {
        return {file.texts[rollout.copies.thread], rollout.copies.counters};
    }
    const auto ancestors = m_lineage.ancestorsOf(file.thread);
    if (ancestors.empty() || m_present.contains(ancestors.front())) {
        return {};
    }
    return {ancestors.front(), rollout.countersBeforeOwn.value_or(0)};
}

OwnPart Comparing::add(const FamilyMember &file)
{
    const Counters &counters = file.rollout.counters;
    m_ancestors = m_lineage.ancestorsOf(file.thread);
    m_isAncestor = {m_ancestors.begin(), m_ancestors.end()};
    OwnPart part;
    part.ancestor = copiedBy(file).thread;
    if (part.ancestor != 0) {
        const auto further = m_lineage.ancestorsOf(part.ancestor);
        m_isAncestor.insert(further.begin(), further.end());
        m_isAncestor.insert(part.ancestor);
    }
    if (!m_ancestors.empty() && !counters.empty()) {
        const auto isCopy = [this](const RolloutUsage &total) { return isOfAncestor(total); };
        part.begin = std::max({behindLast(counters, isCopy), behindShared(file),
            file.rollout.copies.counters, copiedBy(file).counters});
        addCopies(file, part);
    }
    part.isKnown = m_ancestors.empty() || part.begin > 0 || m_present.contains(m_ancestors.front());
    part.untold = behindLast(counters, [&](const RolloutUsage &total) {
        const auto holders = m_holders.find(total);
        return holders != m_holders.end() && std::ranges::count(holders->second, file.thread) > 0;
    });
    part.untold = std::max(part.begin, part.untold);
    for (std::size_t i = part.begin; m_hasOthers && i < counters.size(); ++i) {
        Threads &holders = m_holders[counters[i].total];
        if (holders.empty() || holders.back() != file.thread) {
            holders.push_back(file.thread);
        }
    }
    return part;
}

/// A total of a thread that it comes from is a copy, and so is all that stands in front of it.
bool Comparing::isOfAncestor(const RolloutUsage &total) const
{
    const auto copies = m_copies.find(total);
    return isHeldByAncestor(total)
        || (copies != m_copies.end()
            && std::ranges::any_of(copies->second,
                [this](const Copy &copy) { return m_isAncestor.contains(copy.thread); }));
}

bool Comparing::isHeldByAncestor(const RolloutUsage &total) const
{
    const auto holders = m_holders.find(total);
    return holders != m_holders.end()
        && std::ranges::any_of(
            holders->second, [this](TextId holder) { return m_isAncestor.contains(holder); });
}

Comparing::Copy &Comparing::copyOf(const RolloutUsage &total, TextId thread)
{
    std::vector<Copy> &copies = m_copies[total];
    const auto known = std::ranges::find(copies, thread, &Copy::thread);
    return known == copies.end() ? copies.emplace_back(Copy {thread}) : *known;
}

/// Where a thread that it comes from has no file, an older one of its kin stands in: both begin
/// with the same copies.
std::size_t Comparing::behindShared(const FamilyMember &file)
{
    const Counters &counters = file.rollout.counters;
    std::size_t shared = 0;
    for (const TextId ancestor : m_ancestors) {
        if (m_present.contains(ancestor)) {
            continue;
        }
        auto &heirs = m_heirs[{ancestor, counters.front().total}];
        for (const FamilyMember *heir : heirs) {
            if (heir->thread != file.thread) {
                shared = std::max(shared, commonFront(counters, heir->rollout.counters));
            }
        }
        heirs.push_back(&file);
    }
    return shared;
}

/// What only copies are left of was used as well.
void Comparing::addCopies(const FamilyMember &file, OwnPart &part)
{
    const std::size_t end = copiedBy(file).counters;
    for (std::size_t i = 0; i < end; ++i) {
        const RolloutUsage &total = file.rollout.counters[i].total;
        const bool isTold = std::ranges::any_of(m_copies[total],
            [this](const Copy &copy) { return copy.isTold && m_isAncestor.contains(copy.thread); });
        if (!isTold && !isHeldByAncestor(total)) {
            part.copies.push_back(i);
        }
        copyOf(total, part.ancestor).isTold = true;
    }
}

/// Of a thread's files, that with records of its own goes first, and that which tells more.
bool tellsMore(const Rollout &a, const Rollout &b)
{
    const auto rank = [](const Rollout &rollout) {
        return std::make_tuple(
            rollout.countersBeforeOwn.has_value(), rollout.counters.size(), rollout.end);
    };
    return rank(a) != rank(b) ? rank(a) > rank(b) : packed(a) > packed(b);
}

} // namespace

std::vector<OwnPart> ownParts(const std::vector<FamilyMember> &files, const Lineage &lineage)
{
    std::vector<std::size_t> order(files.size());
    std::iota(order.begin(), order.end(), std::size_t {0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        const Lineage::Age first = lineage.ageOf(files[a].thread);
        const Lineage::Age second = lineage.ageOf(files[b].thread);
        return first != second ? first < second : tellsMore(files[a].rollout, files[b].rollout);
    });
    std::vector<OwnPart> parts(files.size());
    Comparing comparing(files, lineage);
    TextId last = 0;
    for (const std::size_t i : order) {
        parts[i] = comparing.add(files[i]);
        parts[i].tellsMost = files[i].thread != last;
        last = files[i].thread;
    }
    return parts;
}

} // namespace usage
