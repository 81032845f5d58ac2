#include "usage/history/tables/ThreadNameTable.h"

#include "usage/codex/ThreadNames.h"
#include "usage/files/FileIdentity.h"
#include "usage/history/tables/NoteTable.h"
#include "usage/history/tables/SealedTables.h"
#include "usage/history/tables/StateDatabase.h"

#include <fmt/format.h>
#include <optional>

namespace usage {

namespace {

constexpr std::string_view stateFact = "thread names";
constexpr std::string_view titlesFact = "thread titles";

std::map<std::string, std::string, std::less<>> textsOf(Database &database, std::string_view query)
{
    std::map<std::string, std::string, std::less<>> texts;
    Statement rows(database, query);
    while (rows.next()) {
        texts.emplace(rows.bytes(0), rows.bytes(1));
    }
    return texts;
}

/// Nothing when there is no such file.
std::optional<std::string> stateOf(const std::filesystem::path &file)
{
    struct stat status { };
    if (::stat(file.c_str(), &status) != 0) {
        return std::nullopt;
    }
    const FileIdentity identity = FileIdentity::of(status);
    return fmt::format(
        "{} {} {} {}", identity.device, identity.inode, identity.size, identity.modified);
}

} // namespace

std::map<std::string, std::string, std::less<>> threadNames(Database &database)
{
    return textsOf(database, "SELECT thread, name FROM thread_name");
}

std::map<std::string, std::string, std::less<>> threadTitles(Database &database)
{
    return textsOf(database, "SELECT thread, title FROM thread_title");
}

void updateThreadNames(Database &database, const std::filesystem::path &codex, Skips &skips)
{
    const std::filesystem::path file = codex / "session_index.jsonl";
    NoteTable facts(database);
    const auto state = stateOf(file);
    if (!state || *state == facts.text(stateFact)) {
        return;
    }
    Transaction transaction(database);
    Statement replacement(database, replacementIn(threadNameTable));
    const bool isRead = readThreadNames(file, [&replacement](const ThreadName &each) {
        replacement.bind(std::string_view(each.thread), std::string_view(each.name)).run();
    });
    if (!isRead) {
        skips.add(FileSkip::Unreadable); // and tried again the next time
        return;
    }
    facts.set(stateFact, *state);
    facts.set(writtenFact, "");
    transaction.commit();
}

void updateThreadTitles(Database &database, const std::filesystem::path &codex)
{
    const std::filesystem::path file = findStateDatabase(codex);
    NoteTable facts(database);
    const std::string state = stateOfDatabase(file);
    if (file.empty() || state.empty() || state == facts.text(titlesFact)) {
        return;
    }
    const auto titles = readStateTitles(file);
    if (!titles) {
        return;
    }
    const auto known = threadTitles(database);
    Transaction transaction(database);
    Statement replacement(database, replacementIn(threadTitleTable));
    for (const auto &[thread, title] : *titles) {
        const auto held = known.find(thread);
        if (held == known.end() || held->second != title) {
            replacement.bind(std::string_view(thread), std::string_view(title)).run();
            facts.set(writtenFact, "");
        }
    }
    facts.set(titlesFact, state);
    transaction.commit();
}

} // namespace usage
