#include "indexer/SessionBook.h"

#include "indexer/Title.h"

#include <algorithm>
#include <functional>
#include <tuple>

namespace indexer {

namespace {

std::uint64_t hashOf(std::string_view id)
{
    return std::hash<std::string_view> {}(id);
}

/// "…/0b6e….jsonl" is the own file of session "0b6e…".
bool isOwnFile(std::string_view file, std::string_view session)
{
    constexpr std::string_view suffix = ".jsonl";
    if (!file.ends_with(suffix)) {
        return false;
    }
    file.remove_suffix(suffix.size());
    if (!file.ends_with(session)) {
        return false;
    }
    file.remove_suffix(session.size());
    return file.empty() || file.back() == '/';
}

} // namespace

SessionBook::SessionBook(TextPool &names)
    : m_names(names)
{
}

const std::string *SessionBook::Session::title() const
{
    const auto found = std::find_if(
        titles.begin(), titles.end(), [](const Title &title) { return !title.text.empty(); });
    return found == titles.end() ? nullptr : &found->text;
}

std::unordered_map<TextId, std::string> SessionBook::titles() const
{
    std::unordered_map<TextId, std::string> result;
    for (const auto &[id, session] : m_sessions) {
        if (const std::string *text = session.title()) {
            result.emplace(id, *text);
            continue;
        }
        const Title *summary = summaryOf(session);
        if (summary != nullptr) {
            result.emplace(id, summary->text);
        } else if (session.prompt) {
            result.emplace(id, session.prompt->text);
        }
    }
    return result;
}

/// The summary of the latest line that has one; of lines at one time, that in the last file.
const SessionBook::Title *SessionBook::summaryOf(const Session &session) const
{
    const auto rank = [this](TimePoint time, const Title &title) {
        return std::make_tuple(time, m_names.text(title.file), std::string_view(title.text));
    };
    const Title *best = nullptr;
    TimePoint bestTime {};
    for (const Leaf &leaf : session.leaves) {
        const auto found = m_summaries.find(leaf.line);
        if (found != m_summaries.end()
            && (best == nullptr || rank(bestTime, *best) < rank(leaf.time, found->second))) {
            best = &found->second;
            bestTime = leaf.time;
        }
    }
    return best;
}

std::optional<TimePoint> SessionBook::end(TextId session) const
{
    const auto found = m_sessions.find(session);
    return found == m_sessions.end() ? std::nullopt : found->second.end;
}

TextId SessionBook::folder(TextId session) const
{
    const auto found = m_sessions.find(session);
    return found == m_sessions.end() ? 0 : found->second.folder.path;
}

void SessionBook::addConversation(const TranscriptLine &line, TimePoint time)
{
    if (line.sessionId.empty()) {
        return;
    }
    Session &session = m_sessions[m_names.add(line.sessionId)];
    if (!line.isForked) {
        if (line.kind != LineKind::System) {
            session.end = std::max(session.end.value_or(time), time);
        }
        if (!line.uuid.empty() && session.title() == nullptr) {
            session.leaves.push_back({hashOf(line.uuid), time});
        }
    }
    if (line.kind != LineKind::User) {
        return;
    }
    if (!line.cwd.empty()) {
        const Folder folder {time, m_names.add(line.cwd)};
        if (session.folder.path == 0
            || std::make_pair(folder.time, m_names.text(folder.path))
                < std::make_pair(session.folder.time, m_names.text(session.folder.path))) {
            session.folder = folder;
        }
    }
    addPrompt(session, line, time);
}

/// Keeps the earliest prompt that the user wrote.
void SessionBook::addPrompt(Session &session, const TranscriptLine &line, TimePoint time) const
{
    if (line.prompt.empty() || line.isMeta || line.isCompactSummary || line.isSidechain
        || line.hasToolResult || session.title() != nullptr
        || (session.prompt && session.prompt->time < time)) {
        return;
    }
    std::string text = tidyTitle(line.prompt);
    if (!session.prompt || time < session.prompt->time || text < session.prompt->text) {
        session.prompt = Prompt {time, std::move(text)};
    }
}

void SessionBook::addTitle(const TranscriptLine &line, std::string_view file)
{
    std::string text = line.title.empty() ? std::string() : tidyTitle(line.title);
    if (text.empty()) {
        return;
    }
    if (line.kind == LineKind::Summary) {
        if (!line.leafUuid.empty()) {
            replace(m_summaries[hashOf(line.leafUuid)], false, file, std::move(text));
        }
        return;
    }
    if (line.sessionId.empty()) {
        return;
    }
    Session &session = m_sessions[m_names.add(line.sessionId)];
    const std::size_t rank = line.kind == LineKind::CustomTitle ? 0
        : line.kind == LineKind::AgentName                      ? 1
                                                                : 2;
    replace(session.titles.at(rank), isOwnFile(file, line.sessionId), file, std::move(text));
    // What only a session without title needs.
    session.leaves = {};
    session.prompt.reset();
}

void SessionBook::replace(Title &title, bool inOwnFile, std::string_view file, std::string text)
{
    if (title.text.empty()
        || std::make_pair(title.inOwnFile, m_names.text(title.file))
            <= std::make_pair(inOwnFile, file)) {
        title = {inOwnFile, m_names.add(file), std::move(text)};
    }
}

} // namespace indexer
