#pragma once

#include "InputFile.h"
#include "require.h"
#include "usage/lines/LineReader.h"

#include <cstring>
#include <nlohmann/json.hpp>
#include <string>

/// Whether another parser takes it for sound JSON, or stops at what it is stricter about than JSON:
/// numbers beyond its own range and half a surrogate pair.
inline bool isSoundElsewhere(std::string_view line)
{
    try {
        return nlohmann::json::parse(line).is_object();
    } catch (const nlohmann::json::out_of_range &) {
        return true;
    } catch (const nlohmann::json::parse_error &error) {
        return std::string_view(error.what()).find("surrogate U+D") != std::string_view::npos;
    }
}

/// Hands out the lines of an input in the way in which the indexer reads those of a file.
class Lines final {
public:
    /// Calls `parse(line)` for each line, which has exactly the promised padding behind it, so that
    /// an access beyond is noticed. A line that it says has been parsed must be sound JSON.
    template <typename Parse> void each(std::string_view input, Parse parse)
    {
        const std::string filler = fillerFor(input);
        const std::string_view whole = input;
        m_file.write(filler + std::string(input));
        require(!m_reader.open(m_file.path()));
        bool isFirst = true;
        m_last = m_next = filler.size();
        if (!filler.empty()) {
            require(m_reader.next() == std::string_view(filler).substr(0, filler.size() - 1));
            isFirst = false;
        }
        for (auto end = input.find('\n'); end != std::string_view::npos; end = input.find('\n')) {
            std::string_view line = input.substr(0, end);
            if (isFirst && line.starts_with("\xEF\xBB\xBF")) {
                line.remove_prefix(3);
            }
            isFirst = false;
            require(m_reader.next() == line);
            const std::string_view padded = withPadding(line);
            m_last = m_next;
            m_next = m_reader.place();
            require(!parse(padded) || isSoundElsewhere(line));
            input.remove_prefix(end + 1);
        }
        require(!m_reader.next() && !m_reader.failed() && m_reader.overlong() == 0);
        goOnAt(m_last, filler + std::string(whole));
    }

private:
    /// A later run begins where an earlier one stopped.
    void goOnAt(std::size_t place, std::string_view content)
    {
        require(!m_reader.open(m_file.path()) && m_reader.skipTo(place));
        const std::size_t end = content.find('\n', place);
        if (place > 0 && end != std::string_view::npos) {
            require(m_reader.next() == content.substr(place, end - place));
            require(m_reader.place() == end + 1);
        }
    }

    /// Every sixteenth length comes to lie across the border of what is read at once.
    static std::string fillerFor(std::string_view input)
    {
        constexpr std::size_t readAtOnce = std::size_t {256} << 10U;
        constexpr std::size_t some = 16;
        if (input.size() % some != 0) {
            return {};
        }
        return std::string(readAtOnce - input.size() / 2 - 1, 'x') + '\n';
    }

    std::string_view withPadding(std::string_view line)
    {
        constexpr char notJson = '}';
        const std::size_t size = line.size() + usage::LineReader::padding;
        m_copy.reset(new char[size]);
        std::memset(m_copy.get(), notJson, size);
        line.copy(m_copy.get(), line.size());
        return {m_copy.get(), line.size()};
    }

    InputFile m_file;
    usage::LineReader m_reader;
    std::uint64_t m_last = 0; // where the last line begins
    std::uint64_t m_next = 0; // and the one behind it
    std::unique_ptr<char[]> m_copy;
};
