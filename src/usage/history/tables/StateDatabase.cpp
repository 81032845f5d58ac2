#include "usage/history/tables/StateDatabase.h"

#include "usage/files/FileIdentity.h"
#include "usage/history/tables/Database.h"
#include "usage/lines/Title.h"

#include <charconv>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace usage {

namespace {

namespace fs = std::filesystem;

/// More threads than anybody has.
constexpr int mostTitles = 50'000;

/// The number in "state_N.sqlite".
std::optional<std::uint64_t> numberIn(std::string_view name)
{
    constexpr std::string_view front = "state_";
    constexpr std::string_view back = ".sqlite";
    if (!name.starts_with(front) || !name.ends_with(back)
        || name.size() <= front.size() + back.size()) {
        return std::nullopt;
    }
    const std::string_view digits =
        name.substr(front.size(), name.size() - front.size() - back.size());
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc {} && end == digits.data() + digits.size() ? std::optional(number)
                                                                         : std::nullopt;
}

/// What the assistant's own program put in front of the conversation is nobody's title.
bool isWritten(const std::string &title)
{
    using nlohmann::json;
    return isRealPrompt(json(title).dump(-1, ' ', false, json::error_handler_t::replace));
}

} // namespace

fs::path findStateDatabase(const fs::path &codex)
{
    fs::path newest;
    std::optional<std::uint64_t> highest;
    std::error_code error;
    for (fs::directory_iterator entry(codex, error); !error && entry != fs::directory_iterator {};
         entry.increment(error)) {
        const auto number = numberIn(entry->path().filename().native());
        std::error_code ignored;
        if (number && (!highest || *number > *highest) && entry->is_regular_file(ignored)) {
            highest = number;
            newest = entry->path();
        }
    }
    return newest;
}

std::string stateOfDatabase(const fs::path &file)
{
    std::string state;
    for (const char *suffix : {"", "-wal", "-journal"}) {
        struct stat status { };
        if (::stat((file.native() + suffix).c_str(), &status) == 0) {
            const FileIdentity identity = FileIdentity::of(status);
            state += fmt::format("{} {} {} {} {}\n", file.native() + suffix, identity.device,
                identity.inode, identity.size, identity.modified);
        }
    }
    return state;
}

std::optional<std::map<std::string, std::string>> readStateTitles(const fs::path &file)
{
    const std::string before = stateOfDatabase(file);
    Database database(file, Database::Foreign {});
    std::map<std::string, std::string> titles;
    // A view could take for ever.
    if (database.number("SELECT count(*) FROM sqlite_master WHERE type = 'table'"
                        " AND name = 'threads' AND rootpage > 0")
        == 0) {
        return std::nullopt;
    }
    Statement rows(database,
        fmt::format(
            "SELECT substr(id, 1, 128), substr(title, 1, 4096) FROM threads LIMIT {}", mostTitles));
    while (rows.next()) {
        const std::string title(rows.bytes(1));
        titles[std::string(rows.bytes(0))] = isWritten(title) ? tidyName(title) : std::string();
    }
    // Where there is no journal, nobody could keep others from writing meanwhile.
    const bool isSound = !database.problem() && stateOfDatabase(file) == before;
    return isSound ? std::optional(std::move(titles)) : std::nullopt;
}

} // namespace usage
