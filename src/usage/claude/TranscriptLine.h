#pragma once

#include "usage/values/Usage.h"

#include <string_view>

namespace usage {

enum class LineKind { Other, Assistant, User, System, CustomTitle, AgentName, AiTitle, Summary };

/// What one line of a transcript says, as far as it matters here. Texts are empty where the line
/// has none; they point into the reader's buffer and live as long as the line there.
struct TranscriptLine {
    LineKind kind = LineKind::Other;

    std::string_view uuid;
    std::string_view sessionId;
    std::string_view requestId;
    std::string_view timestamp;
    std::string_view cwd;
    std::string_view leafUuid;
    bool isForked = false;
    bool isSidechain = false;
    bool isMeta = false;
    bool isCompactSummary = false;
    bool isApiError = false;

    std::string_view title;  // a JSON string with its quotes
    std::string_view prompt; // likewise: what the user wrote, if anything

    std::string_view messageId;
    std::string_view model;
    bool hasToolResult = false;
    bool hasUsage = false;
    bool hasImpossibleNumbers = false;
    Usage usage;
    Speed speed = Speed::Standard;
    ServiceTier tier = ServiceTier::Standard;
    Ending ending = Ending::Untold;
};

} // namespace usage
