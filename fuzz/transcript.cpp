// The lines of a transcript, what is made of their texts, and what they add up to: the same whether
// the file is read at once or in pieces.

#include "Lines.h"
#include "TranscriptBook.h"
#include "usage/claude/TranscriptReader.h"
#include "usage/lines/Title.h"
#include "usage/reading/LineParsers.h"

namespace {

/// Longer ones make the parser grow.
constexpr std::size_t shortLine = 1'000;
constexpr TimePoint now =
    std::chrono::sys_days {std::chrono::year {2026} / std::chrono::November / 21};

class Target final {
public:
    void run(std::string_view input)
    {
        usage::TranscriptPiece whole;
        usage::TranscriptReader reader(whole, now);
        TranscriptBook atOnce;
        TranscriptBook inPieces;
        m_lines.each(input, [&](std::string_view text) {
            usage::TranscriptLine line;
            if (m_parsers.parse(text, line) != usage::LineOutcome::Parsed) {
                return false;
            }
            look(line);
            reader.add(line);
            usage::TranscriptPiece piece;
            usage::TranscriptReader(piece, now).add(line);
            inPieces.add(piece);
            return true;
        });
        atOnce.add(whole);
        require(atOnce.bytes() == inPieces.bytes());
    }

private:
    /// Texts end up in a JSON file, which throws at what is not UTF-8.
    static void look(const usage::TranscriptLine &line)
    {
        for (const std::string_view token : {line.title, line.prompt}) {
            if (!token.empty()) {
                require(!nlohmann::json(usage::tidyTitle(token)).dump().empty());
            }
        }
        require(!nlohmann::json(usage::folderName(line.cwd)).dump().empty());
        if (const auto time = TimeStamp::parse(line.timestamp)) {
            require(TimeStamp::parse(TimeStamp::text(*time)) == time);
        }
    }

    Lines m_lines;
    usage::LineParsers m_parsers {shortLine};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    static Target target;
    target.run({data, size});
    return 0;
}
