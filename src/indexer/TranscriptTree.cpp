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
    explicit Walk(Skips &skips)
        : m_skips(skips)
    {
    }

    void visit(const fs::path &path, Place place);

    std::vector<fs::path> files;

private:
    void visitFolder(const fs::path &folder, Identity identity, Place place);
    void visitFile(const fs::path &file, const struct stat &status, Place place);
    static bool isLeftOut(const fs::path &folder, Place place);

    Skips &m_skips;
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

void Walk::visit(const fs::path &path, Place place)
{
    struct stat status { };
    if (::stat(path.c_str(), &status) != 0) {
        if (errno == ELOOP) {
            m_skips.add(FileSkip::Loop);
        } else if (errno != ENOENT || isTranscriptName(path.filename().native())) {
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
    if (!isTranscriptName(name) || (place.insideSubagents && name == "journal.jsonl")) {
        return;
    }
    if (!S_ISREG(status.st_mode)) {
        m_skips.add(FileSkip::NotRegular);
    } else if (m_seen.insert({status.st_dev, status.st_ino}).second) {
        files.push_back(file);
    }
}

} // namespace

std::vector<fs::path> findTranscripts(const fs::path &projects, Skips &skips)
{
    Walk walk(skips);
    struct stat status { };
    if (::stat(projects.c_str(), &status) == 0) {
        walk.visit(projects, {});
    } else if (errno != ENOENT && errno != ENOTDIR) {
        skips.add(FileSkip::Unreadable);
    }
    std::sort(walk.files.begin(), walk.files.end(),
        [](const fs::path &a, const fs::path &b) { return a.native() < b.native(); });
    return std::move(walk.files);
}

std::optional<std::string> whyUnreadable(const fs::path &claude, bool mayBeMissing)
{
    fs::path at = claude / "projects";
    int error = readingError(at);
    if (error == ENOENT && isMissing(at)) {
        at = claude;
        error = mayBeMissing && isMissing(at) ? 0 : readingError(at);
    }
    if (error == 0) {
        return std::nullopt;
    }
    return fmt::format("cannot read {}: {}", at.native(), std::strerror(error));
}

} // namespace indexer
