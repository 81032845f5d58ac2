// The lines of a transcript, and what is made of their texts.

#include "indexer/LineParser.h"
#include "indexer/Moment.h"
#include "indexer/Title.h"
#include "Lines.h"

namespace {

class Target final {
public:
    void run(std::string_view input)
    {
        m_lines.each(input, [this](std::string_view text) {
            indexer::TranscriptLine line;
            const bool isParsed = m_parser.parse(text, line) == indexer::LineOutcome::Parsed;
            if (isParsed) {
                look(line);
            }
            return isParsed;
        });
    }

private:
    static void look(const indexer::TranscriptLine &line)
    {
        // As a session keeps them: they end up in a JSON file, which throws at what is not UTF-8.
        for (const std::string_view token : {line.title, line.prompt}) {
            if (!token.empty()) {
                require(!nlohmann::json(indexer::tidyTitle(token)).dump().empty());
                (void)indexer::isRealPrompt(token);
            }
        }
        require(!nlohmann::json(indexer::folderName(line.cwd)).dump().empty());
        if (const auto time = indexer::parseMoment(line.timestamp)) {
            require(indexer::parseMoment(indexer::momentText(*time)) == time);
        }
    }

    Lines m_lines;
    indexer::JsonLine m_json;
    indexer::LineParser m_parser {m_json};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    static Target target;
    target.run({data, size});
    return 0;
}
