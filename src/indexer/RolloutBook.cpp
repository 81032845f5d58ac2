#include "indexer/RolloutBook.h"

#include "indexer/ResponseBook.h"
#include "indexer/RolloutPacking.h"
#include "indexer/ThreadTitles.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace indexer {

namespace {

/// A thread has several files when it was moved, copied or compressed; the counters are those of
/// the file that tells the most.
bool tellsMore(const Rollout &a, const Rollout &b)
{
    const auto rank = [](const Rollout &rollout) {
        return std::make_tuple(
            rollout.counters.size(), rollout.countersBeforeOwn.has_value(), rollout.end);
    };
    return rank(a) != rank(b) ? rank(a) > rank(b) : packed(a) > packed(b);
}

} // namespace

void RolloutBook::add(Rollout rollout)
{
    RolloutFile file = rolloutFile(std::move(rollout), *m_names);
    for (const RolloutMeta &meta : file.rollout.metas) {
        const TextId thread = file.texts[meta.thread];
        if (meta.created) {
            m_lineage.addThread(thread, *meta.created);
        }
        m_lineage.addParent(thread, file.texts[meta.parent], meta.isSubagent, meta.isCopy);
    }
    for (const RolloutRecord &record : file.rollout.records) {
        if (record.thread == 0) {
            TimePoint &begin = m_ownRecords.emplace(file.thread, record.time).first->second;
            begin = std::min(begin, record.time);
        }
    }
    m_files.push_back(std::move(file));
    m_parts.clear();
}

void RolloutBook::forEach(const Visit &visit) const
{
    visitRecords(visit);
    visitCounters(visit);
}

const std::vector<OwnPart> &RolloutBook::parts() const
{
    if (m_parts.size() != m_files.size()) {
        m_parts = ownParts(m_files, m_lineage);
    }
    return m_parts;
}

void RolloutBook::visitRecords(const Visit &visit) const
{
    const ResponseBook responses(m_files, m_lineage, *m_names);
    responses.forEach([&](const RolloutResponse &each) {
        visit(usageRecord(each.thread, each.usage, each.settings, each.time));
    });
}

/// The file of each thread that tells the most. The others are older states of it.
std::set<std::size_t> RolloutBook::bestFiles() const
{
    std::unordered_map<TextId, std::size_t> best;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        const auto [held, isNew] = best.emplace(m_files[i].thread, i);
        if (!isNew && tellsMore(m_files[i].rollout, m_files[held->second].rollout)) {
            held->second = i;
        }
    }
    std::set<std::size_t> numbers;
    for (const auto &[thread, i] : best) {
        numbers.insert(i);
    }
    return numbers;
}

void RolloutBook::visitCounters(const Visit &visit) const
{
    for (const std::size_t i : bestFiles()) {
        visitCounters(m_files[i], parts()[i], visit);
    }
}

/// Counts by the growth beyond the highest total so far. What grew without a record where there are
/// records is not known, since a total may hold several responses: only that something is missing.
void RolloutBook::visitCounters(const RolloutFile &file, OwnPart part, const Visit &visit) const
{
    const std::size_t end = countersToCount(file, part);
    RolloutUsage highest;
    for (std::size_t i = 0; i < file.rollout.counters.size(); ++i) {
        const RolloutCounter &counter = file.rollout.counters[i];
        const RolloutUsage growth = i < end ? counter.total.beyond(highest) : RolloutUsage {};
        highest.raiseTo(counter.total);
        const bool isPartial = i >= end && counter.isBeyond;
        if (i < part.begin || (growth.disjoint() == Usage {} && !isPartial)) {
            continue;
        }
        UsageRecord record =
            usageRecord(file.thread, growth, file.settings(counter.settings), counter.time);
        record.isSum = counter.isSum;
        record.isPartial = isPartial;
        visit(record);
    }
}

/// Where responses have records of their own, only the counters that came before these, and that
/// only where copies can be told.
std::size_t RolloutBook::countersToCount(const RolloutFile &file, OwnPart part) const
{
    const std::vector<RolloutCounter> &counters = file.rollout.counters;
    const auto records = m_ownRecords.find(file.thread);
    if (records == m_ownRecords.end()) {
        return counters.size();
    }
    if (!part.isKnown) {
        return 0;
    }
    // Another file may have them.
    const auto first = std::find_if(counters.begin(), counters.end(),
        [&](const RolloutCounter &counter) { return counter.time >= records->second; });
    return file.rollout.countersBeforeOwn.value_or(
        static_cast<std::size_t>(first - counters.begin()));
}

UsageRecord RolloutBook::usageRecord(
    TextId thread, const RolloutUsage &usage, const RolloutSettings &settings, TimePoint time) const
{
    const Standing standing(false, time);
    UsageRecord record;
    record.usage = usage.disjoint();
    record.standing = standing;
    record.session = {standing, m_lineage.sessionOf(thread)};
    record.model = {standing, settings.model};
    record.folder = {standing, settings.folder};
    record.speed = settings.speed;
    record.tier = settings.tier;
    record.provider = Provider::Codex;
    return record;
}

std::optional<LimitReading> RolloutBook::limits(TimePoint now) const
{
    std::optional<LimitReading> newest;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        const auto &told = m_files[i].rollout.limits;
        if (told && told->reading.time <= now + limitsTolerance
            && isOwn(*told, m_files[i].thread, parts()[i])) {
            newest = std::max(newest, std::optional(told->reading));
        }
    }
    return newest;
}

bool RolloutBook::isOwn(const RolloutLimitReading &limits, TextId thread, OwnPart part) const
{
    return !m_lineage.hasParent(thread) || limits.isBehindOwn
        || (part.isKnown && limits.counters > part.begin);
}

std::vector<RolloutSession> RolloutBook::sessions() const
{
    std::map<TextId, RolloutSession> sessions;
    ThreadTitles titles(m_lineage);
    for (const std::size_t i : bestFiles()) {
        titles.addPrompts(m_files[i], parts()[i]);
    }
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        const TextId thread = m_files[i].thread;
        titles.addName(m_files[i]);
        if (m_lineage.sessionOf(thread) == thread) {
            TimePoint &end = sessions[thread].end;
            end = std::max(end, m_files[i].rollout.end);
        }
    }
    std::map<TextId, std::pair<TimePoint, std::string_view>> folders;
    forEach([&](const UsageRecord &record) {
        const TextId thread = record.session.text;
        RolloutSession &session = sessions[thread];
        session.end = std::max(session.end, record.time());
        const std::pair told {record.time(), m_names->text(record.folder.text)};
        if (record.folder.text != 0 && (session.folder == 0 || told < folders[thread])) {
            folders[thread] = told;
            session.folder = record.folder.text;
        }
    });
    std::vector<RolloutSession> result;
    for (auto &[thread, session] : sessions) {
        session.thread = thread;
        session.title = titles.title(thread);
        session.prompt = titles.prompt(thread);
        if (session.prompt == session.title) {
            session.prompt.clear();
        }
        result.push_back(std::move(session));
    }
    return result;
}

} // namespace indexer
