#pragma once

#include "usage/history/HistoryUpdate.h"
#include "usage/history/tables/Database.h"
#include "usage/pricing/Sums.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace usage {

/// All that the transcripts ever told, kept when they are gone. One program at a time may have a
/// history open.
class History final {
public:
    static constexpr const char *fileName = "history.sqlite";

    /// Opens the history in a folder, or makes one; waits for other programs to be done with it. A
    /// damaged one is kept beside a new one, with what could be read of it. See `problem` for what
    /// went wrong.
    explicit History(const std::filesystem::path &folder);
    /// A history that nobody keeps.
    History();
    ~History();
    History(const History &) = delete;
    History &operator=(const History &) = delete;

    /// Why the history cannot be used, with its name, if so.
    [[nodiscard]] std::optional<std::string> problem() const;
    /// Something that the user ought to know, whole sentences; empty most often.
    [[nodiscard]] const std::string &remark() const { return m_remark; }
    [[nodiscard]] const Skips &skips() const { return m_skips; }
    [[nodiscard]] Database &database() const { return *m_database; }
    /// How many transcripts were there at the last update.
    [[nodiscard]] std::size_t files() const { return m_files; }

    /// Makes something of a history that is up to date.
    using Use = std::function<void(const History &)>;
    /// Brings it up to date and has it used; see `problem` for what went wrong. Damage that is met
    /// by either is repaired, and then it is used again.
    void update(const SourceFolders &folders, const PriceTable &prices, TimePoint now,
        const ProgressTold &progress = {}, const Use &use = {});

private:
    [[nodiscard]] bool lock(const std::filesystem::path &folder);
    void open();
    void check(TimePoint now);
    void use(HistoryUpdate &update, const Use &use);
    void startAnew();
    void build(bool isReadable);
    void setAside();
    [[nodiscard]] bool wasEmptied() const;
    [[nodiscard]] bool isBuilt() const;

    std::filesystem::path m_file; // empty for one in memory
    std::filesystem::path m_new;  // what is to take the place of a damaged one
    std::unique_ptr<Database> m_database;
    std::optional<std::string> m_problem;
    std::string m_remark;
    Skips m_skips;
    std::size_t m_files = 0;
    int m_lock = -1;
};

} // namespace usage
