#include "usage/files/SafeFile.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace usage {

namespace {

namespace fs = std::filesystem;

/// Of a temporary file's name, as mkostemp() wants them.
constexpr std::size_t randomLetters = 6;

/// A file descriptor that is closed when its time is over.
class Descriptor final {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    ~Descriptor() { static_cast<void>(close()); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }

    [[nodiscard]] bool close()
    {
        const int number = m_number;
        m_number = -1;
        return number < 0 || ::close(number) == 0;
    }

private:
    int m_number;
};

std::string failure(std::string_view action, const fs::path &file)
{
    return fmt::format("cannot {} {}: {}", action, file.native(), std::strerror(errno));
}

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Makes the new name itself safe from a power cut; no file system has to support that.
void syncFolder(const fs::path &folder)
{
    const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen()) {
        static_cast<void>(::fsync(descriptor.number()));
    }
}

fs::path folderOf(const fs::path &file)
{
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

/// The file that links lead to, be it there or not; the file itself when it is no link.
fs::path behindLinks(fs::path file)
{
    constexpr int mostLinks = 40; // as many as the system follows
    std::error_code error;
    for (int i = 0; i < mostLinks && fs::is_symlink(file, error); ++i) {
        file = file.parent_path() / fs::read_symlink(file, error);
    }
    return file;
}

/// Removes what killed runs left behind in writing a file: whatever is an hour older than
/// `current`, the temporary file of this run, whose name differs in the last letters only.
void removeLeftovers(const fs::path &current)
{
    constexpr std::time_t hour = 3600;
    struct stat own { };
    const std::string name = current.filename();
    const std::string_view front = std::string_view(name).substr(0, name.size() - randomLetters);
    if (::lstat(current.c_str(), &own) != 0) {
        return;
    }
    std::error_code error;
    fs::directory_iterator entry(folderOf(current), error);
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        const std::string other = entry->path().filename();
        struct stat status { };
        if (other.size() == name.size() && other.starts_with(front)
            && ::lstat(entry->path().c_str(), &status) == 0 && S_ISREG(status.st_mode)
            && status.st_uid == own.st_uid && status.st_mtime < own.st_mtime - hour) {
            ::unlink(entry->path().c_str());
        }
    }
}

} // namespace

FileContent readFile(const fs::path &file, std::size_t limit)
{
    FileContent content;
    const Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat status { };
    if (!descriptor.isOpen() || fstat(descriptor.number(), &status) != 0) {
        content.isMissing = errno == ENOENT || errno == ENOTDIR;
        content.problem = std::strerror(errno);
        return content;
    }
    if (!S_ISREG(status.st_mode) || static_cast<std::size_t>(status.st_size) > limit) {
        content.problem = S_ISREG(status.st_mode) ? "too large" : "not a regular file";
        return content;
    }
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t got =
            ::read(descriptor.number(), bytes.data() + filled, bytes.size() - filled);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            content.problem = std::strerror(errno);
            return content;
        }
        if (got == 0) {
            break;
        }
        filled += static_cast<std::size_t>(got);
    }
    bytes.resize(filled);
    content.bytes = std::move(bytes);
    return content;
}

std::optional<std::string> makeFolder(const fs::path &folder)
{
    fs::path reached;
    for (const fs::path &name : folder) {
        reached /= name;
        if (name.empty() || ::mkdir(reached.c_str(), S_IRWXU) == 0 || errno == EEXIST) {
            continue;
        }
        // Folders above ours may lie on a system that refuses before it looks.
        struct stat status { };
        const int reason = errno;
        if (::stat(reached.c_str(), &status) != 0) {
            errno = reason;
            return failure("create the folder", reached);
        }
    }
    struct stat status { };
    if (::stat(folder.c_str(), &status) == 0 && !S_ISDIR(status.st_mode)) {
        errno = ENOTDIR;
        return failure("use", folder);
    }
    return std::nullopt;
}

std::optional<std::string> replaceFile(const fs::path &name, std::string_view bytes)
{
    const fs::path file = behindLinks(name);
    std::error_code ignored;
    if (fs::is_other(fs::symlink_status(file, ignored))) {
        return fmt::format("cannot write {}: not a regular file", file.native());
    }
    const FileContent present = readFile(file, bytes.size());
    if (present.bytes && *present.bytes == bytes) {
        return std::nullopt;
    }
    const fs::path folder = folderOf(file);
    std::string temporary =
        folder / fmt::format(".{}.{:X>{}}", file.filename().native(), "", randomLetters);
    // Created readable and writable for the user alone.
    Descriptor descriptor(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor.isOpen()) {
        return failure("write in", folder);
    }
    removeLeftovers(temporary);
    if (!writeAll(descriptor.number(), bytes) || ::fsync(descriptor.number()) != 0
        || !descriptor.close() || ::rename(temporary.c_str(), file.c_str()) != 0) {
        std::string text = failure("write", file);
        ::unlink(temporary.c_str());
        return text;
    }
    syncFolder(folder);
    return std::nullopt;
}

} // namespace usage
