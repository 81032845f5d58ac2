#include "usage/claude/TranscriptReader.h"

#include "usage/lines/Title.h"
#include "usage/values/HashOf.h"
#include "usage/values/PlausibleTime.h"

#include <algorithm>
#include <charconv>

namespace usage {

namespace {

bool statesUsage(const TranscriptLine &line)
{
    return line.kind == LineKind::Assistant && line.hasUsage && !line.isApiError
        && line.model != "<synthetic>";
}

} // namespace

TranscriptReader::TranscriptReader(TranscriptPiece &piece, TimePoint now)
    : m_piece(piece)
    , m_now(now)
{
}

void TranscriptReader::add(const TranscriptLine &line)
{
    if (line.kind != LineKind::Assistant && line.kind != LineKind::User
        && line.kind != LineKind::System) {
        addTitle(line);
        return;
    }
    if (statesUsage(line) && line.hasImpossibleNumbers) {
        m_piece.skips.add(LineSkip::ImpossibleNumbers);
        return;
    }
    if (line.timestamp.empty() && !statesUsage(line)) {
        return;
    }
    const auto time = timeOf(line.timestamp, m_now, m_piece.skips, m_piece.again);
    if (!time) {
        return;
    }
    addConversation(line, *time);
    if (statesUsage(line)) {
        addUsage(line, *time);
    }
}

void TranscriptReader::addUsage(const TranscriptLine &line, TimePoint time)
{
    const auto key = keyOf(line);
    if (!key) {
        m_piece.skips.add(LineSkip::NoIdentity);
        return;
    }
    const Standing standing(line.isForked, time);
    if (SessionFacts *session = sessionOf(line)) {
        session->latest = std::max(session->latest.value_or(time), time);
        if (!line.cwd.empty()) {
            session->folder.take(standing, line.cwd);
        }
    }
    Answer record;
    record.usage = line.usage;
    record.standing = standing;
    record.session = {standing, m_piece.names.add(line.sessionId)};
    record.model = {standing, m_piece.names.add(line.model)};
    record.speed = line.speed;
    record.tier = line.tier;
    record.ending = line.ending;
    record.isSidechain = line.isSidechain;

    constexpr std::uint64_t odd = 0x9E3779B97F4A7C15;
    const auto number = static_cast<std::uint32_t>(m_piece.answers.size());
    const auto [place, isNew] = m_places.emplace(key->message * odd + key->request, number);
    if (isNew) {
        m_piece.answers.push_back({*key, record});
    } else {
        merge(m_piece.answers[place->second].record, record, m_piece.names);
    }
}

/// Nothing for a line without any identity.
std::optional<AnswerKey> TranscriptReader::keyOf(const TranscriptLine &line)
{
    const bool hasMessage = !line.messageId.empty();
    // The letter in front keeps the three kinds of ids apart.
    m_text = hasMessage ? 'm' : line.requestId.empty() ? 'u' : 'r';
    m_text += hasMessage ? line.messageId : line.requestId.empty() ? line.uuid : line.requestId;
    if (m_text.size() == 1) {
        return std::nullopt;
    }
    const bool hasRequest = hasMessage && !line.requestId.empty();
    return AnswerKey {hashOf(m_text), hasRequest ? hashOf(line.requestId) : 0};
}

SessionFacts *TranscriptReader::sessionOf(const TranscriptLine &line)
{
    if (line.sessionId.empty()) {
        return nullptr;
    }
    if (m_session == nullptr || m_sessionId != line.sessionId) {
        m_sessionId = line.sessionId;
        m_session = &m_piece.sessions[m_piece.names.add(line.sessionId)];
    }
    return m_session;
}

void TranscriptReader::addConversation(const TranscriptLine &line, TimePoint time)
{
    SessionFacts *session = sessionOf(line);
    if (session == nullptr) {
        return;
    }
    const bool isTitled = session->hasTitle();
    if (!line.isForked) {
        if (line.kind != LineKind::System) {
            session->end = std::max(session->end.value_or(time), time);
        }
        if (!line.uuid.empty() && !isTitled) {
            session->leaves.push_back({hashOf(line.uuid), time});
        }
    }
    if (line.kind != LineKind::User) {
        return;
    }
    const Standing standing(false, time);
    if (!line.cwd.empty()) {
        session->userFolder.take(standing, line.cwd);
    }
    const bool isTheUsers = !line.prompt.empty() && !line.isMeta && !line.isCompactSummary
        && !line.isSidechain && !line.hasToolResult;
    if (isTheUsers && !isTitled
        && (!session->prompt.standing || standing <= *session->prompt.standing)) {
        session->prompt.take(standing, tidyTitle(line.prompt));
    }
}

void TranscriptReader::addTitle(const TranscriptLine &line)
{
    std::string text = line.title.empty() ? std::string() : tidyTitle(line.title);
    if (text.empty()) {
        return;
    }
    if (line.kind == LineKind::Summary) {
        if (!line.leafUuid.empty()) {
            m_piece.summaries[hashOf(line.leafUuid)] = std::move(text);
        }
        return;
    }
    if (SessionFacts *session = sessionOf(line)) {
        const std::size_t rank = line.kind == LineKind::CustomTitle ? 0
            : line.kind == LineKind::AgentName                      ? 1
                                                                    : 2;
        session->titles.at(rank) = std::move(text);
        session->tidy();
    }
}

} // namespace usage
