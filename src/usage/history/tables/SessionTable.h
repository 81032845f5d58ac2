#pragma once

#include "usage/claude/SessionFacts.h"
#include "usage/history/tables/Database.h"
#include "usage/values/Provider.h"

#include <functional>
#include <map>
#include <set>

namespace usage {

/// What is known of the sessions beyond their usage: by file of Claude Code, and put together as
/// it is shown of both providers.
class SessionTable final {
public:
    using Visit = std::function<void(Provider, TextId session, const SessionFace &)>;

    SessionTable(Database &database, const TextPool &names);

    /// What seals what a file tells of a session.
    [[nodiscard]] static std::uint64_t seal(std::int64_t file, TextId session)
    {
        return sealPlace({static_cast<std::uint64_t>(file), session});
    }

    static void visitAll(Database &database, const Visit &visit);
    /// Whether all that files told is as it was written.
    [[nodiscard]] static bool isSound(Database &database);

    /// Adds to what a file told before.
    void append(std::int64_t file, TextId session, SessionFacts facts);
    /// Puts in the place of it what the file tells now.
    void replace(std::int64_t file, TextId session, const SessionFacts &facts);
    void addSummaries(std::int64_t file, const std::map<std::uint64_t, std::string> &summaries);
    /// Forgets those of a file; true when there were any, which may belong to any session.
    [[nodiscard]] bool removeSummaries(std::int64_t file);

    void show(Provider provider, TextId session, const SessionFace &face);
    void hide(Provider provider, TextId session);
    /// Puts some of Claude Code's sessions together anew, or all.
    void showAgain(const std::set<TextId> &sessions);
    void showAllAgain();

private:
    [[nodiscard]] std::vector<std::uint64_t> summarizedLines() const;
    [[nodiscard]] std::optional<Summary> summaryOf(std::uint64_t line) const;

    Database &m_database;
    const TextPool &m_names;
    Statement m_part;
    Statement m_partReplacement;
    Statement m_faceReplacement;
};

} // namespace usage
