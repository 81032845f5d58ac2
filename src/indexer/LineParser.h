#pragma once

#include "indexer/TranscriptLine.h"

#include <deque>
#include <simdjson.h>
#include <string>
#include <string_view>

namespace indexer {

enum class LineOutcome { Parsed, Ignored, NotJson };

/// Takes one line of a transcript apart in a single pass, in place and without a document tree.
class LineParser final {
public:
    LineParser();

    /// `line` needs LineReader::padding readable bytes behind it. A line that matters has to be
    /// sound JSON to its last character; lines of other types are left without a closer look.
    [[nodiscard]] LineOutcome parse(std::string_view line, TranscriptLine &result);

private:
    using Value = simdjson::ondemand::value;

    // Each takes one value and tells whether it was sound JSON.
    [[nodiscard]] bool topField(std::string_view key, Value value);
    [[nodiscard]] bool message(Value value);
    [[nodiscard]] bool messageField(std::string_view key, Value value);
    [[nodiscard]] bool content(Value value);
    [[nodiscard]] bool contentPart(Value value);
    [[nodiscard]] bool usage(Value value);
    [[nodiscard]] bool usageField(std::string_view key, Value value);
    [[nodiscard]] bool count(Value value, std::uint64_t &target);
    [[nodiscard]] bool text(Value value, std::string_view &target);
    [[nodiscard]] bool kind(Value value);

    simdjson::ondemand::parser m_parser;
    std::deque<std::string> m_unescaped; // the few texts of the line that hold escapes
    TranscriptLine *m_line = nullptr;
    bool m_matters = true;
};

} // namespace indexer
