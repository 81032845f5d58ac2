#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string_view>

namespace indexer {

/// A bar that tells how far long work has come. It appears once the work has lasted half a second,
/// changes ten times a second at most, and is erased at the end. For one thread.
class Progress final {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;
    using Write = std::function<void(std::string_view)>;

    /// `write` prints to a terminal; without one nothing is ever shown.
    explicit Progress(Write write, Clock clock = std::chrono::steady_clock::now);
    ~Progress() { finish(); }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// May be called as often as there is something to tell.
    void update(std::uint64_t bytesDone, std::uint64_t bytesTotal);
    /// Erases the bar, if there is one; after this nothing is shown any more.
    void finish();

private:
    Write m_write;
    Clock m_clock;
    std::chrono::steady_clock::time_point m_next; // when it may be drawn
    bool m_isDrawn = false;
};

/// One on standard error, if that is a terminal that can go back in a line.
[[nodiscard]] Progress standardErrorProgress();

} // namespace indexer
