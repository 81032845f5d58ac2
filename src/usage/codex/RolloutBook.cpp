#include "usage/codex/RolloutBook.h"

#include "usage/codex/ResponseBook.h"
#include "usage/codex/ThreadTitles.h"

#include <algorithm>
#include <map>

namespace usage {

void RolloutBook::add(Rollout rollout)
{
    FamilyMember file = rolloutFile(std::move(rollout), *m_names);
    for (const RolloutMeta &meta : file.rollout.metas) {
        const TextId thread = file.texts[meta.thread];
        if (meta.created) {
            m_lineage.addThread(thread, *meta.created);
        }
        m_lineage.addParent(thread, file.texts[meta.parent], meta.isSubagent, meta.isCopy);
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

void RolloutBook::visitCounters(const Visit &visit) const
{
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        visitCounters(m_files[i], parts()[i], visit);
    }
}

/// Counts by the growth beyond the highest total so far. Where responses have records, only the
/// counters that came before these; what grew without a record among them is not known, since a
/// total may hold several responses: only that something is missing.
void RolloutBook::visitCounters(
    const FamilyMember &file, const OwnPart &part, const Visit &visit) const
{
    const Rollout &rollout = file.rollout;
    const std::size_t end = rollout.countersBeforeOwn.value_or(rollout.counters.size());
    auto copy = part.copies.begin();
    RolloutUsage highest;
    for (std::size_t i = 0; i < rollout.counters.size(); ++i) {
        const RolloutCounter &counter = rollout.counters[i];
        const bool isCopy = copy != part.copies.end() && *copy == i;
        const bool isMissing = counter.isBeyond && (isCopy || i >= end);
        const bool counts = !isMissing && (isCopy || i < end) && !rollout.hasRecordOf(i);
        const RolloutUsage growth = counts ? counter.total.beyond(highest) : RolloutUsage {};
        highest.raiseTo(counter.total);
        copy += isCopy ? 1 : 0;
        if ((isCopy || i >= part.untold) && (growth.disjoint() != Usage {} || isMissing)) {
            Answer record = usageRecord(isCopy ? part.ancestor : file.thread, growth,
                file.settings(counter.settings), counter.time);
            record.isSum = counter.isSum;
            record.isPartial = isMissing;
            visit(record);
        }
    }
}

Answer RolloutBook::usageRecord(
    TextId thread, const RolloutUsage &usage, const RolloutSettings &settings, TimePoint time) const
{
    const Standing standing(false, time);
    Answer record;
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

bool RolloutBook::isOwn(const RolloutLimitReading &limits, TextId thread, const OwnPart &part) const
{
    return !m_lineage.hasParent(thread) || limits.isBehindOwn
        || (part.isKnown && limits.counters > part.begin);
}

std::vector<RolloutSession> RolloutBook::sessions() const
{
    std::map<TextId, RolloutSession> sessions;
    ThreadTitles titles(m_lineage);
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        const TextId thread = m_files[i].thread;
        if (parts()[i].tellsMost) {
            titles.addPrompts(m_files[i], parts()[i]);
        }
        titles.addName(m_files[i]);
        if (m_lineage.sessionOf(thread) == thread) {
            TimePoint &end = sessions[thread].end;
            end = std::max(end, m_files[i].rollout.end);
        }
    }
    std::map<TextId, std::pair<TimePoint, std::string_view>> folders;
    forEach([&](const Answer &record) {
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

} // namespace usage
