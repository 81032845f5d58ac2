#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace usage {

/// Why a line of a transcript did not count.
enum class LineSkip { TooLong, NotJson, ImpossibleNumbers, ImpossibleTime, NoIdentity, Count };

/// Why a file or folder was not read.
enum class FileSkip { NotRegular, Loop, Unreadable, Count };

/// Counts what had to be left out, so that nothing is dropped without a word.
class Skips final {
public:
    /// One sentence without a full stop, empty when nothing was skipped.
    [[nodiscard]] std::string sentence() const;
    [[nodiscard]] bool isEmpty() const { return *this == Skips {}; }
    [[nodiscard]] bool operator==(const Skips &) const = default;
    [[nodiscard]] std::size_t count(LineSkip reason) const;
    [[nodiscard]] std::size_t count(FileSkip reason) const;

    void add(LineSkip reason, std::size_t lines = 1);
    void add(FileSkip reason, std::size_t files = 1);
    void add(const Skips &other);

    /// For the history.
    [[nodiscard]] std::string packed() const;
    [[nodiscard]] static Skips unpacked(std::string_view bytes);

private:
    std::array<std::size_t, static_cast<std::size_t>(LineSkip::Count)> m_lines {};
    std::array<std::size_t, static_cast<std::size_t>(FileSkip::Count)> m_files {};
};

} // namespace usage
