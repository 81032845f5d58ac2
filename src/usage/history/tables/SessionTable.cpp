#include "usage/history/tables/SessionTable.h"

#include "usage/history/tables/SealedTables.h"

#include <algorithm>
#include <optional>

namespace usage {

SessionTable::SessionTable(Database &database, const TextPool &names)
    : m_database(database)
    , m_names(names)
    , m_part(database, "SELECT told FROM session_part WHERE session = ? AND file = ?")
    , m_partReplacement(
          database, "INSERT OR REPLACE INTO session_part (session, file, told) VALUES (?, ?, ?)")
    , m_faceReplacement(database, replacementIn(sessionTable))
{
}

void SessionTable::visitAll(Database &database, const Visit &visit)
{
    Statement rows(database, "SELECT provider, session, title, folder, end, prompt FROM session");
    while (rows.next()) {
        visit(static_cast<Provider>(rows.number(0)), static_cast<TextId>(rows.number(1)),
            {std::string(rows.bytes(2)), std::string(rows.bytes(3)),
                TimePoint(TimePoint::duration(rows.number(4))), std::string(rows.bytes(5))});
    }
}

bool SessionTable::isSound(Database &database)
{
    Statement rows(database, "SELECT session, file, told FROM session_part");
    while (rows.next()) {
        if (!unsealed(rows.bytes(2), seal(rows.number(1), static_cast<TextId>(rows.number(0))))) {
            return false;
        }
    }
    return true;
}

void SessionTable::append(std::int64_t file, TextId session, SessionFacts facts)
{
    m_part.bind(session, file);
    std::optional<SessionFacts> before;
    while (m_part.next()) {
        before = unpackSessionFacts(m_part.bytes(0), seal(file, session));
        if (!before) {
            m_database.setDamaged();
        }
    }
    if (before) {
        before->append(std::move(facts));
    } else {
        before = std::move(facts);
    }
    replace(file, session, *before);
}

void SessionTable::replace(std::int64_t file, TextId session, const SessionFacts &facts)
{
    PackedWriter writer;
    pack(writer, facts, seal(file, session));
    m_partReplacement.bind(session, file, std::string_view(writer.bytes())).run();
}

void SessionTable::addSummaries(
    std::int64_t file, const std::map<std::uint64_t, std::string> &summaries)
{
    Statement replacement(m_database, replacementIn(summaryTable));
    for (const auto &[leaf, title] : summaries) {
        replacement.bind(leaf, file, std::string_view(title)).run();
    }
}

bool SessionTable::removeSummaries(std::int64_t file)
{
    Statement summaries(m_database, "DELETE FROM summary WHERE file = ?");
    summaries.bind(file).run();
    return m_database.changes() > 0;
}

void SessionTable::show(Provider provider, TextId session, const SessionFace &face)
{
    m_faceReplacement.bind(static_cast<int>(provider), session, std::string_view(face.title),
        std::string_view(face.folder), face.end.time_since_epoch().count(),
        std::string_view(face.prompt));
    m_faceReplacement.run();
}

void SessionTable::hide(Provider provider, TextId session)
{
    Statement removal(m_database, "DELETE FROM session WHERE provider = ? AND session = ?");
    removal.bind(static_cast<int>(provider), session).run();
}

void SessionTable::showAgain(const std::set<TextId> &sessions)
{
    const std::vector<std::uint64_t> summarized = summarizedLines();
    const Summaries known = [&](std::uint64_t line) {
        return std::ranges::binary_search(summarized, line) ? summaryOf(line) : std::nullopt;
    };
    Statement parts(m_database,
        "SELECT told, path, file FROM session_part JOIN file ON file.id = file WHERE session = ?");
    for (const TextId session : sessions) {
        SessionMerge merged(m_names.text(session));
        parts.bind(session);
        bool hasAny = false;
        while (parts.next()) {
            if (const auto facts =
                    unpackSessionFacts(parts.bytes(0), seal(parts.number(2), session))) {
                merged.add(*facts, parts.bytes(1));
                hasAny = true;
            } else {
                m_database.setDamaged();
            }
        }
        if (hasAny) {
            show(Provider::Claude, session, merged.face(known));
        } else {
            hide(Provider::Claude, session);
        }
    }
}

void SessionTable::showAllAgain()
{
    std::set<TextId> sessions;
    Statement rows(m_database, "SELECT DISTINCT session FROM session_part");
    while (rows.next()) {
        sessions.insert(static_cast<TextId>(rows.number(0)));
    }
    m_database.run("DELETE FROM session WHERE provider = 0");
    showAgain(sessions);
}

/// The lines that have a title, in order. The titles themselves may be more than the memory holds.
std::vector<std::uint64_t> SessionTable::summarizedLines() const
{
    std::vector<std::uint64_t> lines;
    Statement rows(m_database, "SELECT DISTINCT leaf FROM summary");
    while (rows.next()) {
        lines.push_back(rows.bits(0));
    }
    std::ranges::sort(lines); // the table has them as signed numbers
    return lines;
}

/// Of several titles for one line, that in the last file.
std::optional<Summary> SessionTable::summaryOf(std::uint64_t line) const
{
    std::optional<Summary> last;
    Statement rows(
        m_database, "SELECT path, title FROM summary JOIN file ON file.id = file WHERE leaf = ?");
    rows.bind(line);
    while (rows.next()) {
        last = std::max(
            last, std::optional(Summary {std::string(rows.bytes(0)), std::string(rows.bytes(1))}));
    }
    return last;
}

} // namespace usage
