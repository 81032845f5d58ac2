#pragma once

#include <cstdint>
#include <sys/stat.h>

namespace usage {

/// By what a file and its state are known without reading it.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0; // nanoseconds since 1970

    [[nodiscard]] bool operator==(const FileIdentity &) const = default;

    [[nodiscard]] static FileIdentity of(const struct stat &status)
    {
        constexpr std::int64_t second = 1'000'000'000;
        return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
            status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
    }
    [[nodiscard]] bool isSameFile(const FileIdentity &other) const
    {
        return device == other.device && inode == other.inode;
    }
};

} // namespace usage
