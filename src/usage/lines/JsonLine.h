#pragma once

#include "usage/lines/JsonWalk.h"

#include <string_view>

namespace usage {

/// What became of a line.
enum class LineOutcome { Parsed, Ignored, NotJson };

/// Walks lines that are a JSON object each, in place. One is enough for all kinds of lines of one
/// thread: its index is as large as the longest line asks for.
class JsonLine final {
public:
    /// Longer lines make the index grow.
    explicit JsonLine(std::size_t usualLine);

    /// Calls `take(key, value)` for each field; false as soon as that or the line is not sound to
    /// its last character. `line` needs LineReader::padding readable bytes behind it.
    template <typename Take> [[nodiscard]] bool eachTopField(std::string_view line, Take take)
    {
        simdjson::ondemand::document document;
        return isStarted(line, document) && eachField(document.get_object(), take)
            && document.current_location().error() == simdjson::OUT_OF_BOUNDS;
    }

private:
    [[nodiscard]] bool isStarted(std::string_view line, simdjson::ondemand::document &document);

    simdjson::ondemand::parser m_parser;
};

} // namespace usage
