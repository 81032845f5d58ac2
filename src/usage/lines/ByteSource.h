#pragma once

#include "usage/files/FileIdentity.h"
#include "usage/values/Skips.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>

namespace usage {

/// The bytes of a regular file, decompressed if its name ends in ".zst".
class ByteSource final {
public:
    ByteSource();
    ~ByteSource();
    ByteSource(const ByteSource &) = delete;
    ByteSource &operator=(const ByteSource &) = delete;

    /// Starts on a file; never waits for one (a pipe, a device). Says what is wrong with it, if so.
    [[nodiscard]] std::optional<FileSkip> open(const std::filesystem::path &file);

    [[nodiscard]] bool isCompressed() const { return m_isCompressed; }
    /// Of the file as it was when it was opened.
    [[nodiscard]] const FileIdentity &identity() const { return m_identity; }
    /// Tells the bytes in front of a place from others; nothing when there are not so many.
    [[nodiscard]] std::optional<std::uint64_t> guardBefore(std::uint64_t place) const;

    /// Goes to a place in a file that is not compressed.
    [[nodiscard]] bool skipTo(std::uint64_t place);
    /// Fetches at most so many bytes of those that the file had when it was opened: 0 at their
    /// end, nothing after an error.
    [[nodiscard]] std::optional<std::size_t> read(char *target, std::size_t most);

private:
    class Decompressor;

    [[nodiscard]] std::optional<std::size_t> readRaw(char *target, std::size_t most);
    [[nodiscard]] std::optional<std::size_t> readDecompressed(char *target, std::size_t most);
    void close();

    std::unique_ptr<Decompressor> m_decompressor; // made for the first compressed file
    FileIdentity m_identity;
    int m_descriptor = -1;
    std::size_t m_unread = 0; // bytes of the file still to be fetched
    std::size_t m_room = 0;   // bytes that it may still unpack to
    bool m_isCompressed = false;
};

} // namespace usage
