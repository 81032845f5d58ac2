#include "indexer/TranscriptTree.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <set>
#include <string_view>
#include <sys/stat.h>

namespace indexer {

namespace {

namespace fs = std::filesystem;

using Identity = std::pair<dev_t, ino_t>;

/// Where in the tree the walk stands.
struct Place {
    int depth = 0; // 0 is the projects folder itself
    bool insideSubagents = false;
};

/// One walk over the tree.
class Walk final {
public:
    using Name = bool (*)(std::string_view);

    Walk(Skips &skips, Name isWanted)
        : m_skips(skips)
        , m_isWanted(isWanted)
    {
    }

    void visit(const fs::path &path, Place place);

    std::vector<fs::path> files;

private:
    void visitFolder(const fs::path &folder, Identity identity, Place place);
    void visitFile(const fs::path &file, const struct stat &status, Place place);
    static bool isLeftOut(const fs::path &folder, Place place);

    Skips &m_skips;
    Name m_isWanted;
    std::set<Identity> m_seen;
    std::vector<Identity> m_above; // the folders that the walk is inside of
};

/// What prevents reading a folder: a number of errno, or 0.
int readingError(const fs::path &folder)
{
    // With a dot behind it, it has to be a folder that can be entered.
    struct stat status { };
    if (::stat((folder / ".").c_str(), &status) != 0) {
        return errno;
    }
    std::error_code error;
    const fs::directory_iterator entries(folder, error);
    return error.value();
}

/// Whether nothing has that name; a link to nothing is something.
bool isMissing(const fs::path &path)
{
    struct stat status { };
    return ::lstat(path.c_str(), &status) != 0 && errno == ENOENT;
}

bool isTranscriptName(std::string_view name)
{
    return name.ends_with(".jsonl") && name.find(".orphaned") == std::string_view::npos
        && name.find(".superseded") == std::string_view::npos;
}

bool isRolloutName(std::string_view name)
{
    return name.starts_with("rollout-")
        && (name.ends_with(".jsonl") || name.ends_with(".jsonl.zst"));
}

void Walk::visit(const fs::path &path, Place place)
{
    struct stat status { };
    if (::stat(path.c_str(), &status) != 0) {
        if (errno == ELOOP) {
            m_skips.add(FileSkip::Loop);
        } else if (errno != ENOENT || m_isWanted(path.filename().native())) {
            // Of what leads nowhere, only a transcript would be missed.
            m_skips.add(FileSkip::Unreadable);
        }
        return;
    }
    if (S_ISDIR(status.st_mode)) {
        if (!isLeftOut(path, place)) {
            visitFolder(path, {status.st_dev, status.st_ino}, place);
        }
        return;
    }
    visitFile(path, status, place);
}

/// What lies inside a project, but holds no conversation. A project itself may have any name.
bool Walk::isLeftOut(const fs::path &folder, Place place)
{
    const std::string name = folder.filename().native();
    return place.depth > 0
        && ((place.depth > 1 && (name == "tool-results" || name == "memory"))
            || name.find(".orphaned") != std::string::npos
            || name.find(".superseded") != std::string::npos);
}

void Walk::visitFolder(const fs::path &folder, Identity identity, Place place)
{
    if (std::find(m_above.begin(), m_above.end(), identity) != m_above.end()) {
        m_skips.add(FileSkip::Loop);
        return;
    }
    if (!m_seen.insert(identity).second) {
        return;
    }
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        entries.push_back(it->path());
    }
    if (error) {
        m_skips.add(FileSkip::Unreadable);
    }
    std::sort(entries.begin(), entries.end(),
        [](const fs::path &a, const fs::path &b) { return a.native() < b.native(); });

    m_above.push_back(identity);
    place.insideSubagents = place.insideSubagents || folder.filename() == "subagents";
    ++place.depth;
    for (const fs::path &entry : entries) {
        visit(entry, place);
    }
    m_above.pop_back();
}

void Walk::visitFile(const fs::path &file, const struct stat &status, Place place)
{
    const std::string name = file.filename().native();
    if (!m_isWanted(name) || (place.insideSubagents && name == "journal.jsonl")) {
        return;
    }
    if (!S_ISREG(status.st_mode)) {
        m_skips.add(FileSkip::NotRegular);
    } else if (m_seen.insert({status.st_dev, status.st_ino}).second) {
        files.push_back(file);
    }
}

/// All files below some folders that `isWanted` by their names.
std::vector<fs::path> findFiles(
    std::initializer_list<fs::path> folders, Walk::Name isWanted, Skips &skips)
{
    Walk walk(skips, isWanted);
    for (const fs::path &folder : folders) {
        struct stat status { };
        if (::stat(folder.c_str(), &status) == 0) {
            walk.visit(folder, {});
        } else if (errno != ENOENT && errno != ENOTDIR) {
            skips.add(FileSkip::Unreadable);
        }
    }
    std::sort(walk.files.begin(), walk.files.end(),
        [](const fs::path &a, const fs::path &b) { return a.native() < b.native(); });
    return std::move(walk.files);
}

} // namespace

std::vector<fs::path> findTranscripts(const fs::path &projects, Skips &skips)
{
    return findFiles({projects}, isTranscriptName, skips);
}

std::vector<fs::path> findRollouts(const fs::path &codex, Skips &skips)
{
    std::vector<fs::path> files =
        findFiles({codex / "sessions", codex / "archived_sessions"}, isRolloutName, skips);
    std::set<std::string> plain;
    for (const fs::path &file : files) {
        plain.insert(file.filename());
    }
    std::erase_if(files, [&plain](const fs::path &file) {
        return file.extension() == ".zst" && plain.contains(file.stem());
    });
    return files;
}

std::optional<std::string> whyUnreadable(
    const fs::path &home, std::string_view inner, bool mayBeMissing)
{
    fs::path at = home / inner;
    int error = readingError(at);
    if (error == ENOENT && isMissing(at)) {
        at = home;
        error = mayBeMissing && isMissing(at) ? 0 : readingError(at);
    }
    if (error == 0) {
        return std::nullopt;
    }
    return fmt::format("cannot read {}: {}", at.native(), std::strerror(error));
}

} // namespace indexer
