#pragma once

#include "usage/claude/TranscriptLine.h"
#include "usage/lines/JsonFields.h"
#include "usage/lines/JsonLine.h"

#include <string_view>

namespace usage {

/// Takes one line of a transcript apart in a single pass, in place and without a document tree.
class TranscriptParser final {
public:
    explicit TranscriptParser(JsonLine &json);

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
    [[nodiscard]] bool kind(Value value);

    JsonLine &m_json;
    JsonFields m_fields;
    TranscriptLine *m_line = nullptr;
    bool m_matters = true;
};

} // namespace usage
