#pragma once

#include "usage/codex/RolloutLine.h"
#include "usage/lines/JsonFields.h"
#include "usage/lines/JsonLine.h"

#include <string_view>

namespace usage {

/// Takes one line of a Codex rollout apart, as TranscriptParser does with a transcript's.
class RolloutParser final {
public:
    explicit RolloutParser(JsonLine &json);

    /// `line` needs LineReader::padding readable bytes behind it.
    [[nodiscard]] LineOutcome parse(std::string_view line, RolloutLine &result);

private:
    using Value = simdjson::ondemand::value;

    // Each takes one value and tells whether it was sound JSON.
    [[nodiscard]] bool topField(std::string_view key, Value value);
    [[nodiscard]] bool payload(Value value);
    [[nodiscard]] bool payloadField(std::string_view key, Value value);
    [[nodiscard]] bool part(std::string_view key, Value value);
    [[nodiscard]] bool source(Value value);
    [[nodiscard]] bool info(Value value);
    [[nodiscard]] bool usage(Value value, RolloutUsage &target);
    [[nodiscard]] bool limits(Value value);
    [[nodiscard]] bool window(Value value, RolloutWindow &target);
    [[nodiscard]] bool settings(Value value);
    [[nodiscard]] bool content(Value value);
    [[nodiscard]] RolloutKind kind() const;

    JsonLine &m_json;
    JsonFields m_fields;
    RolloutLine *m_line = nullptr;
    std::string_view m_type;        // of the line
    std::string_view m_payloadType; // and of what it carries
    std::string_view m_role;
    bool m_hasPayload = false;
    bool m_matters = true;
};

} // namespace usage
