#include "usage/lines/JsonLine.h"

#include "usage/lines/LineReader.h"

#include <new>

namespace usage {

static_assert(LineReader::padding >= simdjson::SIMDJSON_PADDING);

JsonLine::JsonLine(std::size_t usualLine)
{
    // All at once; memory that no line needs is never touched.
    if (m_parser.allocate(usualLine) != simdjson::SUCCESS) {
        throw std::bad_alloc();
    }
}

bool JsonLine::isStarted(std::string_view line, simdjson::ondemand::document &document)
{
    return m_parser.iterate(line.data(), line.size(), line.size() + LineReader::padding)
               .get(document)
        == simdjson::SUCCESS;
}

} // namespace usage
