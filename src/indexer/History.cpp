#include "indexer/History.h"

#include "indexer/HistorySchema.h"
#include "indexer/Salvage.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace indexer {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// Longer than any run takes that makes progress.
constexpr auto longestWait = 10min;
constexpr auto betweenTries = 20ms;
/// The whole file is looked through when that was not done for so long.
constexpr std::chrono::hours betweenChecks {24};

/// How the connection is to work: readers never wait, what was committed stays sound whatever
/// happens, and the memory is bounded.
constexpr const char *manners = "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL;"
                                "PRAGMA cache_size = -12288; PRAGMA temp_store = MEMORY;"
                                "PRAGMA journal_size_limit = 4194304";

/// A name that nothing in the folder has yet.
fs::path freeName(const fs::path &folder)
{
    std::error_code error;
    for (int number = 1;; ++number) {
        fs::path name = folder / fmt::format("history-damaged-{}.sqlite", number);
        if (!fs::exists(name, error)) {
            return name;
        }
    }
}

} // namespace

History::History(const fs::path &folder)
    : m_file(folder / fileName)
{
    if (!lock(folder)) {
        return;
    }
    open();
    if (m_database->isDamaged()) {
        startAnew();
    }
}

History::History()
    : m_database(std::make_unique<Database>(fs::path {}))
{
    m_problem = bringSchemaUpToDate(*m_database);
}

History::~History()
{
    m_database.reset();
    if (m_lock >= 0) {
        ::close(m_lock);
    }
}

std::optional<std::string> History::problem() const
{
    const auto &problem = m_problem || m_database == nullptr ? m_problem : m_database->problem();
    return problem ? std::optional(fmt::format("cannot use {}: {}", m_file.native(), *problem))
                   : std::nullopt;
}

/// The kernel's lock of the folder itself: it ends with the process, however that ends, and leaves
/// no file behind.
bool History::lock(const fs::path &folder)
{
    m_lock = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const auto until = std::chrono::steady_clock::now() + longestWait;
    while (m_lock >= 0 && ::flock(m_lock, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            // A file system without locks; the database has its own for the worst.
            return true;
        }
        if (std::chrono::steady_clock::now() > until) {
            m_problem = "another program has been at work on it for too long";
            return false;
        }
        std::this_thread::sleep_for(betweenTries);
    }
    if (m_lock < 0) {
        m_problem = std::strerror(errno);
    }
    return m_lock >= 0;
}

void History::open()
{
    m_database = std::make_unique<Database>(m_file);
    m_database->run(manners);
    const auto problem = bringSchemaUpToDate(*m_database);
    if (problem && !m_database->problem()) {
        m_problem = problem;
    }
}

/// The damaged file and what belongs to it get names of their own.
void History::setAside()
{
    m_database.reset();
    const fs::path kept = freeName(m_file.parent_path());
    for (const char *part : {"", "-wal", "-shm"}) {
        const fs::path from = m_file.native() + part;
        std::error_code error;
        fs::rename(from, kept.native() + part, error);
        if (error && *part == '\0') {
            m_problem = error.message();
            return;
        }
    }
    m_remark = fmt::format("{} was damaged and is kept as {}; the history is made anew from the"
                           " transcripts that are still there and from what could be read of it",
        m_file.native(), kept.native());
    m_damaged = kept;
}

/// A new file in the damaged one's place, with what can be saved.
void History::startAnew()
{
    setAside();
    if (m_problem) {
        return;
    }
    open();
    if (!problem()) {
        salvage(m_damaged, *m_database);
    }
}

bool History::update(const SourceFolders &folders, const PriceTable &prices, TimePoint now,
    const ProgressTold &progress)
{
    const auto attempt = [&] {
        check(now);
        HistoryUpdate update(*m_database, prices, now);
        const bool isChanged = update.run(folders, progress);
        m_skips = update.skips();
        m_files = update.files();
        return isChanged;
    };
    const bool isChanged = attempt();
    if (!m_database->isDamaged() || m_file.empty()) {
        return isChanged;
    }
    startAnew();
    return problem() ? isChanged : attempt();
}

/// Looks through the whole file now and then, so that damage is found before it spreads.
void History::check(TimePoint now)
{
    FactTable facts(*m_database);
    const TimePoint last(TimePoint::duration(facts.number("checked")));
    if (m_file.empty() || (last <= now && now - last < betweenChecks)) {
        return;
    }
    if (last != TimePoint {} && !isSound()) {
        m_database->setDamaged();
        return;
    }
    facts.set("checked", now.time_since_epoch().count());
}

bool History::isSound() const
{
    Statement rows(*m_database, "PRAGMA quick_check(1)");
    bool isSound = false;
    while (rows.next()) {
        isSound = rows.bytes(0) == "ok";
    }
    return isSound;
}

} // namespace indexer
