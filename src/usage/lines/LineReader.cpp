#include "usage/lines/LineReader.h"

#include <cstring>

namespace usage {

namespace {

/// Small enough to stay in the processor's cache between reading and parsing.
constexpr std::size_t chunk = std::size_t {256} << 10U;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

} // namespace

LineReader::LineReader()
    // Not value-initialised: pages that no long line ever needs are never touched.
    : m_buffer(new char[longestLine + chunk + padding])
{
}

std::optional<FileSkip> LineReader::open(const std::filesystem::path &file)
{
    m_begin = m_scanned = m_filled = m_discarded = m_overlong = 0;
    m_place = 0;
    m_first = true;
    m_discarding = m_failed = false;
    return m_source.open(file);
}

bool LineReader::skipTo(std::uint64_t place)
{
    m_place = place;
    m_first = place == 0;
    return m_source.skipTo(place);
}

std::optional<std::string_view> LineReader::next()
{
    for (;;) {
        const void *newline = std::memchr(m_buffer.get() + m_scanned, '\n', m_filled - m_scanned);
        if (newline != nullptr) {
            const auto end =
                static_cast<std::size_t>(static_cast<const char *>(newline) - m_buffer.get());
            const bool fits = !m_discarding && end - m_begin <= longestLine;
            const std::string_view line = trimmed(end);
            m_begin = m_scanned = end + 1;
            m_discarding = false;
            m_place += m_discarded;
            m_discarded = 0;
            if (fits) {
                return line;
            }
            ++m_overlong;
            continue;
        }
        m_discarding = m_discarding || m_filled - m_begin > longestLine;
        if (m_discarding) {
            // Not passed yet: it is to be found again as long as its end is not written.
            m_discarded += m_filled - m_begin;
            m_filled = m_scanned = m_begin;
        }
        if (!refill()) {
            return std::nullopt;
        }
    }
}

/// The line from m_begin to its newline, without the mark that some editors put at a file's front.
/// The carriage return of foreign systems may stay: to JSON it is a blank.
std::string_view LineReader::trimmed(std::size_t end)
{
    std::string_view line(m_buffer.get() + m_begin, end - m_begin);
    if (m_first && line.starts_with(byteOrderMark)) {
        line.remove_prefix(byteOrderMark.size());
    }
    m_first = false;
    return line;
}

/// Moves the unfinished line to the front and fetches more behind it.
bool LineReader::refill()
{
    m_filled -= m_begin;
    std::memmove(m_buffer.get(), m_buffer.get() + m_begin, m_filled);
    m_place += m_begin;
    m_begin = 0;
    m_scanned = m_filled;

    const auto got = m_source.read(m_buffer.get() + m_filled, chunk);
    m_failed = m_failed || !got;
    m_filled += got.value_or(0);
    return got.value_or(0) > 0;
}

} // namespace usage
