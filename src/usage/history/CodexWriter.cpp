#include "usage/history/CodexWriter.h"

#include "usage/codex/RolloutPacking.h"
#include "usage/history/tables/NoteTable.h"

#include <algorithm>

namespace usage {

namespace {

constexpr std::string_view timeFact = "limits time";
constexpr std::string_view jsonFact = "limits";

/// The rollout as it is stored, without any bytes for one that is to be forgotten. Its memory is
/// given up: its family will need as much.
KeptRollout kept(std::int64_t file, Rollout *rollout)
{
    if (rollout == nullptr) {
        return {.file = file, .bytes = {}, .threads = {}};
    }
    KeptRollout kept {file, packed(*rollout), kinOf(*rollout)};
    *rollout = {};
    return kept;
}

} // namespace

std::optional<WrittenLimits> storedLimits(Database &database)
{
    const NoteTable facts(database);
    WrittenLimits limits {
        TimePoint(TimePoint::duration(facts.number(timeFact))), facts.text(jsonFact)};
    return limits.json.empty() ? std::nullopt : std::optional(std::move(limits));
}

CodexWriter::CodexWriter(Database &database, SessionTable &sessions, TextPool &names, TimePoint now)
    : m_database(database)
    , m_sessions(sessions)
    , m_names(names)
    , m_now(now)
    , m_rollouts(database)
{
}

void CodexWriter::put(const Rollouts &rollouts)
{
    for (const auto &[file, rollout] : rollouts) {
        put(std::vector {kept(file, rollout)});
    }
}

void CodexWriter::put(const std::vector<KeptRollout> &rollouts)
{
    for (const KeptRollout &rollout : rollouts) {
        if (rollout.bytes.empty()) {
            m_rollouts.remove(rollout.file);
        } else {
            m_rollouts.put(rollout);
        }
    }
}

void CodexWriter::put(const Rollouts &rollouts, Sums &sums)
{
    if (rollouts.empty()) {
        return;
    }
    RolloutTable::Files files;
    std::vector<std::string> threads;
    std::vector<KeptRollout> later;
    for (const auto &[file, rollout] : rollouts) {
        files.insert(file);
        later.push_back(kept(file, rollout));
        std::ranges::copy(later.back().threads, std::back_inserter(threads));
    }
    // All that was a family, and all that becomes one by the threads that are new.
    RolloutTable::Files family = m_rollouts.familyOf(files, threads);
    takeAway(m_rollouts.book(family), sums);
    put(later);
    family.merge(files);
    add(m_rollouts.book(family), sums);
    keepLimits();
}

void CodexWriter::addAll(Sums &sums)
{
    m_database.run("DELETE FROM session WHERE provider = 1");
    for (const RolloutTable::Files &family : m_rollouts.families()) {
        add(m_rollouts.book(family), sums);
    }
    keepLimits();
}

void CodexWriter::add(const RolloutBook &book, Sums &sums)
{
    book.forEach([&](const Answer &record) { sums.add(withOurNames(record, book.names())); });
    for (const RolloutSession &session : book.sessions()) {
        m_sessions.show(Provider::Codex, m_names.add(book.names().text(session.thread)),
            {session.title, std::string(book.names().text(session.folder)), session.end,
                session.prompt});
    }
    if (auto limits = book.limits(m_now); limits && (!m_limits || *m_limits < *limits)) {
        m_limits = std::move(limits);
    }
}

/// Readings only move forward, also when the file with the newest one is gone.
void CodexWriter::keepLimits()
{
    const auto held = storedLimits(m_database);
    if (m_limits
        && (!held || held->time < m_limits->time || held->time > m_now + limitsTolerance)) {
        NoteTable facts(m_database);
        facts.set(timeFact, m_limits->time.time_since_epoch().count());
        facts.set(jsonFact, limitsJson(*m_limits));
    }
}

void CodexWriter::takeAway(const RolloutBook &book, Sums &sums)
{
    book.forEach([&](const Answer &record) { sums.takeAway(withOurNames(record, book.names())); });
    for (const RolloutSession &session : book.sessions()) {
        m_sessions.hide(Provider::Codex, m_names.add(book.names().text(session.thread)));
    }
}

Answer CodexWriter::withOurNames(Answer record, const TextPool &names)
{
    record.session.text = m_names.add(names.text(record.session.text));
    record.model.text = m_names.add(names.text(record.model.text));
    return record;
}

} // namespace usage
