#include "usage/history/Backup.h"

#include "usage/history/HistorySummary.h"
#include "usage/history/tables/Database.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

namespace usage {

namespace {

namespace fs = std::filesystem;

/// A file beside the one that it is to become, removed unless it does.
class Draft final {
public:
    explicit Draft(const fs::path &file)
        : m_file(file)
        , m_name(file.native() + ".XXXXXX")
    {
        const int made = ::mkostemp(m_name.data(), O_CLOEXEC);
        m_isMade = made >= 0;
        if (m_isMade) {
            ::close(made);
        }
    }
    ~Draft()
    {
        if (m_isMade) {
            ::unlink(m_name.c_str());
            ::unlink((m_name + "-journal").c_str());
        }
    }
    Draft(const Draft &) = delete;
    Draft &operator=(const Draft &) = delete;

    [[nodiscard]] bool isMade() const { return m_isMade; }
    [[nodiscard]] const std::string &name() const { return m_name; }
    [[nodiscard]] bool become()
    {
        m_isMade = m_isMade && ::rename(m_name.c_str(), m_file.c_str()) != 0;
        return !m_isMade;
    }

private:
    fs::path m_file;
    std::string m_name;
    bool m_isMade = false;
};

std::optional<std::string> copyProblem(const fs::path &history, const fs::path &copy)
{
    Database from(history, Database::ForReading {});
    Database to(copy);
    to.copyFrom(from);
    to.run("PRAGMA journal_mode = DELETE"); // whoever opens it leaves nothing beside it
    return from.problem() ? from.problem() : to.problem();
}

} // namespace

std::optional<std::string> backUp(const fs::path &history, const fs::path &file)
{
    std::error_code error;
    if (!fs::exists(history, error)) {
        return fmt::format("there is no {} to copy yet", history.native());
    }
    const bool isThere = fs::exists(file, error);
    if (isThere && (!fs::is_regular_file(file, error) || fs::equivalent(history, file, error))) {
        return fmt::format("{} cannot be replaced by a copy of the history", file.native());
    }
    Draft draft(file);
    if (!draft.isMade()) {
        return fmt::format("cannot write {}: {}", file.native(), std::strerror(errno));
    }
    const auto problem = copyProblem(history, draft.name());
    if (problem) {
        return fmt::format("cannot copy {}: {}", history.native(), *problem);
    }
    const std::string damage = historyProblem(draft.name());
    if (!damage.empty() && isThere) {
        return fmt::format(
            "{} is damaged ({}), so {} was left as it is", history.native(), damage, file.native());
    }
    if (!draft.become()) {
        return fmt::format("cannot write {}: {}", file.native(), std::strerror(errno));
    }
    return damage.empty() ? std::nullopt
                          : std::optional(fmt::format(
                              "{} was copied, but it is damaged: {}", history.native(), damage));
}

} // namespace usage
