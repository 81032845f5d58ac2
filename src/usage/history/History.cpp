#include "usage/history/History.h"

#include "usage/history/Salvage.h"
#include "usage/history/tables/HistorySchema.h"
#include "usage/history/tables/SealedTables.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace usage {

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

/// Set in a new history by the transaction that everything was saved in.
constexpr std::string_view salvagedFact = "salvaged";

/// With the journals that it may have.
void removeWhole(const fs::path &database)
{
    std::error_code error;
    for (const char *part : {"-journal", "-wal", "-shm", ""}) {
        fs::remove(database.native() + part, error);
    }
}

/// What a damaged file is to be called: a name that nothing has yet, or, where a run was ended
/// after it had got its name, that one. Nothing when there are many: what is damaged again and
/// again is not to fill the disk.
std::optional<fs::path> nameOfDamaged(const fs::path &file)
{
    constexpr int most = 9;
    std::error_code error;
    const bool isNamed = !fs::exists(file, error);
    std::optional<fs::path> last;
    for (int number = 1; number <= most; ++number) {
        fs::path name = file.parent_path() / fmt::format("history-damaged-{}.sqlite", number);
        if (!fs::exists(name, error)) {
            return isNamed && last ? last : name;
        }
        last = std::move(name);
    }
    return isNamed ? last : std::nullopt;
}

} // namespace

History::History(const fs::path &folder)
    : m_file(folder / fileName)
    , m_new(folder / "history-new.sqlite")
{
    if (!lock(folder)) {
        return;
    }
    if (isBuilt() || wasEmptied()) {
        startAnew();
        return;
    }
    open();
    if (m_database->isDamaged()) {
        open(); // see update()
    }
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
    m_database.reset(); // with its locks
    m_database = std::make_unique<Database>(m_file);
    m_database->run(manners);
    const auto problem = bringSchemaUpToDate(*m_database);
    if (problem && !m_database->problem()) {
        m_problem = problem;
    }
}

/// Whether a file without content stands where there was a history: SQLite would take it for new,
/// and remove the journal that is left of the old one.
bool History::wasEmptied() const
{
    std::error_code error;
    const bool isEmpty = fs::exists(m_file, error) && fs::file_size(m_file, error) == 0;
    const fs::path journal = m_file.native() + "-wal";
    return isEmpty
        && ((fs::exists(journal, error) && fs::file_size(journal, error) > 0)
            || fs::exists(m_file.parent_path() / "stats.json", error));
}

/// Whether a run made a whole new history and was ended before it stood in its place.
bool History::isBuilt() const
{
    std::error_code error;
    if (!fs::exists(m_new, error)) {
        return false;
    }
    Database database(m_new);
    return NoteTable(database).number(salvagedFact) != 0 && !database.problem();
}

/// A new file with what can be saved of the damaged one, which stays where it is until that is
/// done: whenever the run ends, nothing is lost.
void History::startAnew()
{
    const bool isReadable = !wasEmptied();
    m_database.reset();
    if (!isBuilt()) {
        build(isReadable);
    }
    if (m_problem) {
        removeWhole(m_new);
    } else {
        setAside();
    }
    if (!m_problem) {
        open();
    }
    if (!problem()) {
        m_remark += fmt::format("; the history is made anew from the transcripts that are still"
                                " there and from what could be read of it: {} answers of Claude"
                                " Code, {} threads of Codex",
            m_database->number("SELECT count(*) FROM answer"),
            m_database->number("SELECT count(*) FROM rollout"));
    }
}

/// All in one transaction and without a journal that outlives it.
void History::build(bool isReadable)
{
    removeWhole(m_new);
    Database database(m_new);
    m_problem = bringSchemaUpToDate(database);
    Transaction transaction(database);
    if (isReadable && !m_problem) {
        m_problem = salvage(m_file, database);
    }
    if (m_problem) {
        return;
    }
    NoteTable(database).set(salvagedFact, 1);
    transaction.commit();
    m_problem = database.problem();
}

/// The damaged file gets a name of its own, what belongs to it first: a journal must not be taken
/// for that of another file.
void History::setAside()
{
    const auto kept = nameOfDamaged(m_file);
    if (!kept) {
        m_problem = "it is damaged, as were all that are kept beside it; remove some of those";
        return;
    }
    std::error_code error;
    for (const char *part : {"-wal", "-shm", ""}) {
        const fs::path from = m_file.native() + part;
        const fs::path to = kept->native() + part;
        if (fs::exists(to, error)) {
            fs::remove(from, error); // a run that was ended had come so far already
        } else if (fs::exists(from, error)) {
            fs::rename(from, to, error);
        }
        if (error) {
            m_problem = error.message();
            return;
        }
    }
    fs::rename(m_new, m_file, error);
    if (error) {
        m_problem = error.message();
        return;
    }
    m_remark = fmt::format("{} was damaged and is kept as {}", m_file.native(), kept->native());
}

void History::update(const SourceFolders &folders, const PriceTable &prices, TimePoint now,
    const ProgressTold &progress, const Use &use)
{
    const auto attempt = [&] {
        check(now);
        HistoryUpdate update(*m_database, prices, now);
        update.run(folders, progress);
        m_skips = update.skips();
        m_files = update.files();
        if (use && !m_database->problem()) {
            this->use(update, use);
        }
    };
    attempt();
    if (!m_database->isDamaged() || m_file.empty()) {
        return;
    }
    // A disk that failed to read or to open once looks like damage, which is met again.
    open();
    if (!problem()) {
        attempt();
    }
    if (!m_database->isDamaged()) {
        return;
    }
    startAnew();
    if (!problem()) {
        attempt();
    }
}

/// Whoever uses it finds out whether the sums are as they were written, and has them marked as
/// outdated if not.
void History::use(HistoryUpdate &update, const Use &use)
{
    const auto isOutdated = [this] {
        return NoteTable(*m_database).text(sumsFact) == outdatedSums;
    };
    use(*this);
    if (isOutdated()) {
        update.renewSums();
        use(*this);
        if (isOutdated()) {
            m_database->setDamaged();
        }
    }
}

/// Looks through the whole file now and then, so that damage is found before it spreads.
void History::check(TimePoint now)
{
    NoteTable facts(*m_database);
    const TimePoint last(TimePoint::duration(facts.number("checked")));
    if (m_file.empty() || (last <= now && now - last < betweenChecks)) {
        return;
    }
    if (last != TimePoint {}) {
        const Damage damage = damageOf(*m_database).damage;
        if (damage == Damage::Whole) {
            m_database->setDamaged();
            return;
        }
        if (damage == Damage::Made) {
            facts.set(sumsFact, outdatedSums);
        }
    }
    m_database->run("PRAGMA wal_checkpoint(TRUNCATE)");
    facts.set("checked", now.time_since_epoch().count());
}

} // namespace usage
