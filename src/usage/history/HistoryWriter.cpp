#include "usage/history/HistoryWriter.h"

#include <algorithm>

namespace usage {

namespace {

/// So many answers go into one transaction: enough to be quick, few enough for the memory.
constexpr std::size_t mostWaiting = 40'000;
constexpr std::size_t mostPieces = 500;

/// In rows of the history, or what takes as much memory.
std::size_t sizeOf(const FilePiece &piece)
{
    if (const auto *rollout = std::get_if<Rollout>(&piece.told)) {
        return rollout->records.size() + rollout->counters.size() + rollout->laterPrompts.size();
    }
    const auto &told = std::get<TranscriptPiece>(piece.told);
    return told.answers.size() + told.summaries.size();
}

} // namespace

HistoryWriter::HistoryWriter(
    Database &database, const PriceTable &prices, const ReadPlan &plan, TimePoint now)
    : m_database(database)
    , m_plan(plan)
    , m_ids(plan.files.size())
    , m_facts(database)
    , m_files(database)
    , m_nameTable(database)
    , m_answers(database, m_nameTable.names())
    , m_sessions(database, m_nameTable.names())
    , m_families(database, m_sessions, m_nameTable.names(), now)
    , m_versions(database)
    , m_sumTable(database)
    , m_sums(prices, m_nameTable.names())
{
    std::ranges::transform(plan.files, m_ids.begin(),
        [](const PlannedFile &file) { return file.known == nullptr ? 0 : file.known->id; });
}

bool HistoryWriter::add(FilePiece &&piece, SumUpkeep upkeep)
{
    m_waiting += sizeOf(piece);
    m_pieces.push_back(std::move(piece));
    if (m_waiting > mostWaiting || m_pieces.size() > mostPieces) {
        flush(upkeep);
    }
    return !m_database.problem();
}

void HistoryWriter::flush(SumUpkeep upkeep)
{
    if (m_pieces.empty()) {
        return;
    }
    Transaction transaction(m_database);
    for (FilePiece &piece : m_pieces) {
        resolve(piece);
    }
    for (FilePiece &piece : m_pieces) {
        collect(piece);
        m_files.mark(piece);
    }
    store(upkeep);
    for (const std::int64_t file : m_superfluous) {
        m_files.remove(file);
    }
    m_nameTable.save();
    m_facts.set(writtenFact, "");
    transaction.commit();
    m_rollouts.clear();
    m_pieces.clear();
    m_answersTold.clear();
    m_superfluous.clear();
    m_waiting = 0;
}

/// Gives a file its number. What it told of answers before stays told, whatever became of it; its
/// sessions are what it makes of them now.
void HistoryWriter::resolve(FilePiece &piece)
{
    const auto number = static_cast<std::size_t>(piece.file);
    const PlannedFile &planned = m_plan.files[number];
    std::int64_t &id = m_ids[number];
    resolveVersions(piece, planned, id);
    if (id == 0) {
        id = m_files.add(planned.provider, planned.found.path);
    }
    piece.file = id;
    if (piece.isFresh && planned.known != nullptr && planned.provider == Provider::Claude) {
        m_retold[id].clear();
        m_hasNewSummaries = m_sessions.removeSummaries(id) || m_hasNewSummaries;
    }
}

/// What a rollout told before it was cut or overwritten keeps its number; the new version gets one
/// of its own.
void HistoryWriter::resolveVersions(
    const FilePiece &piece, const PlannedFile &planned, std::int64_t &id)
{
    const auto *rollout = std::get_if<Rollout>(&piece.told);
    if (rollout == nullptr) {
        return;
    }
    if (piece.isFresh && id != 0 && !planned.isSame && m_versions.mustStay(planned, *rollout)) {
        m_files.setAside(id);
        id = 0;
    }
    for (const std::int64_t file : m_versions.toldBy(*rollout, planned)) {
        m_rollouts.emplace_back(file, nullptr);
        m_superfluous.push_back(file);
    }
}

void HistoryWriter::collect(FilePiece &piece)
{
    if (auto *rollout = std::get_if<Rollout>(&piece.told)) {
        m_rollouts.emplace_back(piece.file, rollout);
    } else {
        collect(piece.file, std::get<TranscriptPiece>(piece.told));
    }
}

void HistoryWriter::collect(std::int64_t file, TranscriptPiece &told)
{
    std::vector<TextId> ids(told.names.size());
    for (TextId id = 1; id < ids.size(); ++id) {
        ids[id] = m_nameTable.names().add(told.names.text(id));
    }
    for (FileAnswer &answer : told.answers) {
        answer.record.session.text = ids[answer.record.session.text];
        answer.record.model.text = ids[answer.record.model.text];
        m_answersTold.push_back(answer);
    }
    told.answers = {};
    for (auto &[session, facts] : told.sessions) {
        collect(file, ids[session], std::move(facts));
    }
    m_sessions.addSummaries(file, told.summaries);
    m_hasNewSummaries = m_hasNewSummaries || !told.summaries.empty();
}

void HistoryWriter::collect(std::int64_t file, TextId session, SessionFacts facts)
{
    m_touchedSessions.insert(session);
    const auto retold = m_retold.find(file);
    if (retold != m_retold.end() && retold->second.insert(session).second) {
        m_sessions.replace(file, session, facts);
    } else {
        m_sessions.append(file, session, std::move(facts));
    }
}

std::vector<std::uint64_t> HistoryWriter::touchedMessages() const
{
    std::vector<std::uint64_t> messages;
    for (const FileAnswer &answer : m_answersTold) {
        messages.push_back(answer.key.message);
    }
    std::ranges::sort(messages);
    messages.erase(std::unique(messages.begin(), messages.end()), messages.end());
    return messages;
}

void HistoryWriter::store(SumUpkeep upkeep)
{
    const bool isSummedNow = upkeep == SumUpkeep::WithEachBatch;
    const std::vector<std::uint64_t> touched =
        isSummedNow ? touchedMessages() : std::vector<std::uint64_t> {};
    for (const std::uint64_t message : touched) {
        m_answers.visit(message, [this](const Answer &record) { m_sums.takeAway(record); });
    }
    // Signed, as the table orders them.
    std::ranges::sort(m_answersTold, {}, [](const FileAnswer &answer) {
        return std::make_pair(static_cast<std::int64_t>(answer.key.message),
            static_cast<std::int64_t>(answer.key.request));
    });
    m_answers.put(m_answersTold);
    for (const std::uint64_t message : touched) {
        m_answers.visit(message, [this](const Answer &record) { m_sums.add(record); });
    }
    if (!isSummedNow) {
        m_families.put(m_rollouts);
        m_facts.set(sumsFact, outdatedSums);
        return;
    }
    m_families.put(m_rollouts, m_sums);
    if (!m_sumTable.change(m_sums.all())) {
        m_facts.set(sumsFact, outdatedSums);
    }
    m_sums.clear();
    showSessions();
}

void HistoryWriter::showSessions()
{
    if (m_hasNewSummaries) {
        m_sessions.showAllAgain();
    } else {
        m_sessions.showAgain(m_touchedSessions);
    }
    m_touchedSessions.clear();
    m_hasNewSummaries = false;
}

void HistoryWriter::rebuildSums(const std::string &version)
{
    m_sums.clear();
    m_answers.visitAll([this](const Answer &record) { m_sums.add(record); });
    Transaction transaction(m_database);
    m_families.addAll(m_sums);
    m_nameTable.save();
    m_sumTable.clear();
    static_cast<void>(m_sumTable.change(m_sums.all()));
    m_sessions.showAllAgain();
    m_facts.set(sumsFact, version);
    m_facts.set(writtenFact, "");
    transaction.commit();
    m_sums.clear();
}

} // namespace usage
