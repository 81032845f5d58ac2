#pragma once

#include "indexer/Moment.h"
#include "indexer/TextPool.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

namespace indexer {

/// What is known of Codex's threads beyond their usage: titles and ends.
class ThreadBook final {
public:
    explicit ThreadBook(TextPool &names);

    /// Empty when there is none.
    [[nodiscard]] const std::string &title(TextId thread) const;
    /// When the last line was written, the beginning of time for a thread without a file.
    [[nodiscard]] TimePoint end(TextId thread) const;

    /// Reads session_index.jsonl in Codex's folder, if it is there: names that the user gave.
    void addIndex(const std::filesystem::path &file);
    /// A line was written.
    void addLine(TextId thread, TimePoint time);
    /// A new name; it and the prompt are JSON strings with their quotes.
    void addName(TextId thread, TimePoint time, std::string_view token);
    /// Something that the user wrote: the earliest is the title of a thread without name.
    void addPrompt(TextId thread, TimePoint time, std::string_view token);

private:
    struct Dated {
        TimePoint time = TimePoint::min();
        std::string text;
    };
    struct Thread {
        Dated indexed;
        Dated name;
        Dated prompt;
        TimePoint end = TimePoint::min();
    };

    TextPool &m_names;
    std::unordered_map<TextId, Thread> m_threads;
};

} // namespace indexer
