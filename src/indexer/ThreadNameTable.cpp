#include "indexer/ThreadNameTable.h"

#include "indexer/FactTable.h"
#include "indexer/FileIdentity.h"
#include "indexer/ThreadNames.h"

#include <fmt/format.h>
#include <optional>

namespace indexer {

namespace {

constexpr std::string_view stateFact = "thread names";

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
    std::map<std::string, std::string, std::less<>> names;
    Statement rows(database, "SELECT thread, name FROM thread_name");
    while (rows.next()) {
        names.emplace(rows.bytes(0), rows.bytes(1));
    }
    return names;
}

void updateThreadNames(Database &database, const std::filesystem::path &codex, Skips &skips)
{
    const std::filesystem::path file = codex / "session_index.jsonl";
    FactTable facts(database);
    const auto state = stateOf(file);
    if (!state || *state == facts.text(stateFact)) {
        return;
    }
    const auto names = readThreadNames(file);
    if (!names) {
        skips.add(FileSkip::Unreadable); // and tried again the next time
        return;
    }
    Transaction transaction(database);
    Statement replacement(
        database, "INSERT OR REPLACE INTO thread_name (thread, name) VALUES (?, ?)");
    for (const ThreadName &each : *names) {
        replacement.bind(std::string_view(each.thread), std::string_view(each.name)).run();
    }
    facts.set(stateFact, *state);
    facts.set(writtenFact, "");
    transaction.commit();
}

} // namespace indexer
