#pragma once

#include "usage/history/tables/AnswerTable.h"
#include "usage/reading/FileTask.h"

#include <vector>

namespace usage {

/// A file that the history knows.
struct KnownFile {
    std::int64_t id = 0;
    Provider provider = Provider::Claude;
    std::string path;
    ReadMark mark;
    std::optional<TimePoint> again; // when it is to be read anew
    bool isGone = false;
};

/// The files of the history.
class FileTable final {
public:
    explicit FileTable(Database &database);

    [[nodiscard]] std::vector<KnownFile> all() const;
    /// What was left out of all files.
    [[nodiscard]] static Skips skips(Database &database);

    /// Takes up a file of which nothing was read yet, and gives it a number.
    [[nodiscard]] std::int64_t add(Provider provider, const std::string &path);
    /// Notes how far a piece went.
    void mark(const FilePiece &piece);
    void move(std::int64_t id, const std::string &path);
    void setGone(std::int64_t id, bool isGone);
    /// Makes room for another version of the file, which was not added to but changed.
    void setAside(std::int64_t id);
    void remove(std::int64_t id);
    /// Has a file be taken for unchanged as long as it looks like this.
    void setIdentity(std::int64_t id, const FileIdentity &identity);

private:
    void seal(std::int64_t id);

    Database &m_database;
    Statement m_before;
    Statement m_mark;
    Statement m_seal;
};

} // namespace usage
