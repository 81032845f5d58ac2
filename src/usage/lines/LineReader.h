#pragma once

#include "usage/lines/ByteSource.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

namespace usage {

/// Reads a file line by line through one buffer, whatever the size of file and lines.
class LineReader final {
public:
    static constexpr std::size_t longestLine = std::size_t {8} << 20U;
    /// Readable bytes behind every line, as the JSON parser wants them.
    static constexpr std::size_t padding = 64;

    LineReader();

    /// Starts on a file; never waits for one (a pipe, a device). Says what is wrong with it, if so.
    [[nodiscard]] std::optional<FileSkip> open(const std::filesystem::path &file);
    /// Goes to where a line begins in a file that is not compressed, before any line is asked for.
    [[nodiscard]] bool skipTo(std::uint64_t place);

    [[nodiscard]] const ByteSource &source() const { return m_source; }
    /// Where the line behind the last one begins: all in front of it was read.
    [[nodiscard]] std::uint64_t place() const { return m_place + m_begin; }

    /// The next whole line without its end, valid until the next call. What follows the last
    /// newline is still being written and is left alone, as is what is written from now on.
    [[nodiscard]] std::optional<std::string_view> next();

    /// Lines passed over because of their length, in the current file.
    [[nodiscard]] std::size_t overlong() const { return m_overlong; }
    /// Whether the current file ended with a reading error.
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    [[nodiscard]] bool refill();
    [[nodiscard]] std::string_view trimmed(std::size_t end);

    std::unique_ptr<char[]> m_buffer;
    ByteSource m_source;
    std::uint64_t m_place = 0; // of the buffer's first byte in the file
    std::size_t m_begin = 0;   // of the line in the buffer
    std::size_t m_scanned = 0; // up to here there is no newline
    std::size_t m_filled = 0;
    std::size_t m_discarded = 0; // bytes of a line that is too long
    std::size_t m_overlong = 0;
    bool m_first = true;       // no line was handed out yet
    bool m_discarding = false; // inside such a line
    bool m_failed = false;
};

} // namespace usage
