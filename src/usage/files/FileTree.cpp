#include "usage/files/FileTree.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <memory>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace usage {

namespace {

namespace fs = std::filesystem;

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

    /// Takes what has a name in an open folder, or a whole path.
    void visit(int folder, const std::string &name, Place place);

    std::vector<FoundFile> files;

private:
    using Identity = std::pair<std::uint64_t, std::uint64_t>;

    void visitFolder(int descriptor, const FileIdentity &identity, Place place);
    void visitFile(const std::string &name, const struct stat &status, Place place);
    [[nodiscard]] std::vector<std::string> entriesOf(DIR *folder, Place place) const;
    [[nodiscard]] bool isTranscript(std::string_view name, Place place) const;
    static bool isLeftOut(std::string_view folder, Place place);

    Skips &m_skips;
    Name m_isWanted;
    std::string m_path; // of the folder that the walk is in, with a slash behind it
    std::set<Identity> m_seenFolders;
    std::set<Identity> m_seenFiles;
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

void Walk::visit(int folder, const std::string &name, Place place)
{
    struct stat status { };
    if (::fstatat(folder, name.c_str(), &status, 0) != 0) {
        if (errno == ELOOP) {
            m_skips.add(FileSkip::Loop);
        } else if (errno != ENOENT || m_isWanted(name)) {
            // Of what leads nowhere, only a transcript would be missed.
            m_skips.add(FileSkip::Unreadable);
        }
        return;
    }
    if (!S_ISDIR(status.st_mode)) {
        visitFile(name, status, place);
        return;
    }
    if (isLeftOut(name, place)) {
        return;
    }
    const int descriptor =
        ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        m_skips.add(FileSkip::Unreadable);
        return;
    }
    const std::size_t length = m_path.size();
    m_path += name;
    m_path += '/';
    place.insideSubagents = place.insideSubagents || name == "subagents";
    visitFolder(descriptor, FileIdentity::of(status), place);
    m_path.resize(length);
}

/// What lies inside a project, but holds no conversation. A project itself may have any name.
bool Walk::isLeftOut(std::string_view folder, Place place)
{
    return place.depth > 0
        && ((place.depth > 1 && (folder == "tool-results" || folder == "memory"))
            || folder.find(".orphaned") != std::string_view::npos
            || folder.find(".superseded") != std::string_view::npos);
}

/// The descriptor is closed in the end.
void Walk::visitFolder(int descriptor, const FileIdentity &identity, Place place)
{
    const Identity own(identity.device, identity.inode);
    DIR *folder = ::fdopendir(descriptor);
    if (folder == nullptr) {
        ::close(descriptor);
        m_skips.add(FileSkip::Unreadable);
        return;
    }
    const std::unique_ptr<DIR, int (*)(DIR *)> closing(folder, ::closedir);
    if (std::find(m_above.begin(), m_above.end(), own) != m_above.end()) {
        m_skips.add(FileSkip::Loop);
        return;
    }
    if (!m_seenFolders.insert(own).second) {
        return;
    }
    ++place.depth;
    m_above.push_back(own);
    for (const std::string &name : entriesOf(folder, place)) {
        visit(descriptor, name, place);
    }
    m_above.pop_back();
}

/// What has to be looked at, in the order of the names: of several links to one file, always the
/// same is found.
std::vector<std::string> Walk::entriesOf(DIR *folder, Place place) const
{
    std::vector<std::string> entries;
    errno = 0;
    while (const dirent *entry = ::readdir(folder)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && (entry->d_type != DT_REG || isTranscript(name, place))) {
            entries.emplace_back(name);
        }
        errno = 0;
    }
    if (errno != 0) {
        m_skips.add(FileSkip::Unreadable);
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

bool Walk::isTranscript(std::string_view name, Place place) const
{
    return m_isWanted(name) && !(place.insideSubagents && name == "journal.jsonl");
}

void Walk::visitFile(const std::string &name, const struct stat &status, Place place)
{
    if (!isTranscript(name, place)) {
        return;
    }
    const FileIdentity identity = FileIdentity::of(status);
    if (!S_ISREG(status.st_mode)) {
        m_skips.add(FileSkip::NotRegular);
    } else if (m_seenFiles.insert({identity.device, identity.inode}).second) {
        files.push_back({m_path + name, identity});
    }
}

/// All files below some folders that `isWanted` by their names.
std::vector<FoundFile> findFiles(
    std::initializer_list<fs::path> folders, Walk::Name isWanted, Skips &skips)
{
    Walk walk(skips, isWanted);
    for (const fs::path &folder : folders) {
        struct stat status { };
        if (::stat(folder.c_str(), &status) == 0) {
            walk.visit(AT_FDCWD, folder.native(), {});
        } else if (errno != ENOENT && errno != ENOTDIR) {
            skips.add(FileSkip::Unreadable);
        }
    }
    return std::move(walk.files);
}

} // namespace

std::vector<FoundFile> findTranscripts(const fs::path &projects, Skips &skips)
{
    return findFiles({projects}, isTranscriptName, skips);
}

std::vector<FoundFile> findRollouts(const fs::path &codex, Skips &skips)
{
    return findFiles({codex / "sessions", codex / "archived_sessions"}, isRolloutName, skips);
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

} // namespace usage
