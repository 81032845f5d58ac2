#include "usage/statistics/StoredTotals.h"

#include "usage/lines/ByteSource.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string_view>
#include <sys/stat.h>

namespace usage {

namespace {

using Json = nlohmann::json;

/// The characters of a file as the parser takes them. The parser holds one text or number at a
/// time, so the file ends for it inside one that is longer than any of ours.
class Characters final {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = const char &;

    Characters() = default;
    explicit Characters(ByteSource &source)
        : m_source(&source)
        , m_buffer(std::make_shared<Buffer>())
    {
        fetch();
    }

    [[nodiscard]] reference operator*() const { return (*m_buffer)[m_at]; }
    Characters &operator++()
    {
        constexpr std::size_t longest = std::size_t {1} << 20U;
        m_length = isPartOfMore(**this) ? m_length + 1 : 0;
        ++m_at;
        if (m_length > longest) {
            m_source = nullptr;
        } else if (m_at == m_filled) {
            fetch();
        }
        return *this;
    }
    [[nodiscard]] bool operator!=(const Characters &other) const
    {
        return m_source != other.m_source;
    }

private:
    using Buffer = std::array<char, std::size_t {64} << 10U>;

    /// Whether a text or a number goes on behind a character.
    [[nodiscard]] bool isPartOfMore(char c)
    {
        if (!m_isInText) {
            m_isInText = c == '"';
            return m_isInText
                || std::string_view(" \t\r\n,:[]{}").find(c) == std::string_view::npos;
        }
        m_isInText = m_isEscaped || c != '"';
        m_isEscaped = !m_isEscaped && c == '\\';
        return m_isInText;
    }
    void fetch()
    {
        m_at = 0;
        m_filled = m_source->read(m_buffer->data(), m_buffer->size()).value_or(0);
        m_source = m_filled > 0 ? m_source : nullptr;
    }

    ByteSource *m_source = nullptr; // none behind the end
    std::shared_ptr<Buffer> m_buffer;
    std::size_t m_at = 0;
    std::size_t m_filled = 0;
    std::size_t m_length = 0; // of the text or number so far
    bool m_isInText = false;
    bool m_isEscaped = false; // the next character of the text is
};

/// Takes the costs of the spans while the file goes by; nothing else of it is kept.
class TotalsHandler final {
public:
    bool null() { return take(std::nullopt); }
    bool boolean(bool /*value*/) { return take(std::nullopt); }
    bool number_integer(Json::number_integer_t value) { return take(static_cast<double>(value)); }
    bool number_unsigned(Json::number_unsigned_t value) { return take(static_cast<double>(value)); }
    bool number_float(Json::number_float_t value, const std::string & /*token*/)
    {
        return take(value);
    }
    bool string(std::string & /*value*/) { return take(std::nullopt); }
    bool binary(Json::binary_t & /*value*/) { return take(std::nullopt); }
    bool start_object(std::size_t /*elements*/)
    {
        const bool isOnTheWay = m_way == m_depth && (m_depth == 0 || m_isWanted);
        m_way += isOnTheWay ? 1 : 0;
        m_hasTotals = m_hasTotals || (isOnTheWay && m_way == inTotals);
        return enter();
    }
    bool start_array(std::size_t /*elements*/) { return enter(); }
    bool end_object() { return leave(); }
    bool end_array() { return leave(); }
    bool key(std::string &name);
    bool parse_error(
        std::size_t /*place*/, const std::string & /*token*/, const Json::exception & /*error*/)
    {
        return false;
    }

    /// Nothing when the file holds no totals.
    [[nodiscard]] std::optional<StoredTotals> totals() const
    {
        return m_hasTotals ? std::optional(m_totals) : std::nullopt;
    }

private:
    static constexpr int inFile = 1; // objects on the way to a cost
    static constexpr int inTotals = 2;
    static constexpr int inSpan = 3;

    [[nodiscard]] static std::optional<double> StoredTotals::*spanOf(std::string_view name);
    bool take(std::optional<double> value);
    /// False for what is nested deeper than any of ours.
    bool enter()
    {
        constexpr int deepest = 512;
        return ++m_depth <= deepest;
    }
    bool leave()
    {
        --m_depth;
        m_way = std::min(m_way, m_depth);
        return true;
    }

    StoredTotals m_totals;
    bool m_hasTotals = false;
    std::optional<double> StoredTotals::*m_span = nullptr; // whose object it is in
    int m_depth = 0;                                       // of objects and arrays
    int m_way = 0;           // how many of these, from the outermost on, lead to a cost
    bool m_isWanted = false; // the key in the innermost of them does too
};

std::optional<double> StoredTotals::*TotalsHandler::spanOf(std::string_view name)
{
    return name == "today" ? &StoredTotals::today
        : name == "week"   ? &StoredTotals::week
        : name == "month"  ? &StoredTotals::month
                           : nullptr;
}

/// Of a key that stands there twice, the last counts.
bool TotalsHandler::key(std::string &name)
{
    if (m_way != m_depth) {
        return true;
    }
    if (m_depth == inFile) {
        m_isWanted = name == "totals";
        m_hasTotals = m_hasTotals && !m_isWanted;
        m_totals = m_isWanted ? StoredTotals {} : m_totals;
    } else if (m_depth == inTotals) {
        m_span = spanOf(name);
        m_isWanted = m_span != nullptr;
    } else {
        m_isWanted = m_depth == inSpan && name == "cost";
    }
    if (m_isWanted && m_span != nullptr && m_depth > inFile) {
        m_totals.*m_span = std::nullopt;
    }
    return true;
}

bool TotalsHandler::take(std::optional<double> value)
{
    if (m_way == inSpan && m_depth == inSpan && m_isWanted) {
        m_totals.*m_span = value && std::isfinite(*value) ? value : std::nullopt;
    }
    return true;
}

} // namespace

StoredTotalsLoad readStoredTotals(const std::filesystem::path &statsFile)
{
    struct stat about { };
    ByteSource source;
    if (::stat(statsFile.c_str(), &about) != 0) {
        return {{}, errno == ENOENT || errno == ENOTDIR, std::strerror(errno)};
    }
    if (!S_ISREG(about.st_mode)) {
        return {{}, false, "not a regular file"};
    }
    if (source.open(statsFile)) {
        return {{}, false, std::strerror(errno)};
    }
    TotalsHandler handler;
    if (!Json::sax_parse(Characters(source), Characters(), &handler)) {
        return {{}, false, "not JSON"};
    }
    auto totals = handler.totals();
    if (totals) {
        using std::chrono::seconds;
        totals->writtenAt = TimePoint(seconds(about.st_mtim.tv_sec));
    }
    return {totals, false, totals ? "" : "no statistics"};
}

} // namespace usage
