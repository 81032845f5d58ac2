// A whole rollout: what a line means depends on those before it.

#include "indexer/RolloutParser.h"
#include "indexer/RolloutReader.h"
#include "Lines.h"

namespace {

/// Times beyond these never get as far as the reader.
bool isPlausible(indexer::TimePoint time)
{
    using namespace std::chrono;
    return time >= sys_days {year {2000} / January / 1}
    && time < sys_days {year {2100} / January / 1};
}

class Target final {
public:
    void run(std::string_view input)
    {
        indexer::TextPool names;
        indexer::RolloutBook book(names);
        indexer::RolloutReader reader(book, names);
        reader.begin("rollout-2026-11-20T10-00-00-01990000-0000-7000-8000-000000000001");
        m_lines.each(input, [&](std::string_view text) {
            indexer::RolloutLine line;
            const bool isParsed = m_parser.parse(text, line) == indexer::LineOutcome::Parsed;
            if (isParsed && !line.hasImpossibleNumbers) {
                const auto time = indexer::parseMoment(line.timestamp);
                reader.add(line, time && isPlausible(*time) ? time : std::nullopt);
            }
            return isParsed;
        });
        reader.end();
        look(book);
    }

private:
    static void look(const indexer::RolloutBook &book)
    {
        book.forEach(
            [](const indexer::UsageRecord &record) { require(isPlausible(record.time())); });
        (void)book.limits();
    }

    Lines m_lines;
    indexer::JsonLine m_json;
    indexer::RolloutParser m_parser {m_json};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    static Target target;
    target.run({data, size});
    return 0;
}
