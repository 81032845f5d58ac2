// A whole rollout: what a line means depends on those before it, also when these were read long ago
// and kept as bytes.

#include "Lines.h"
#include "usage/codex/RolloutBook.h"
#include "usage/codex/RolloutPacking.h"
#include "usage/codex/RolloutReader.h"
#include "usage/reading/LineParsers.h"
#include "usage/values/PlausibleTime.h"

namespace {

/// Longer ones make the parser grow.
constexpr std::size_t shortLine = 1'000;
constexpr TimePoint now =
    std::chrono::sys_days {std::chrono::year {2026} / std::chrono::November / 21};
constexpr std::string_view name =
    "rollout-2026-11-20T10-00-00-01990000-0000-7000-8000-000000000001";

class Target final {
public:
    void run(std::string_view input)
    {
        usage::Rollout whole = usage::startRollout(name);
        usage::RolloutReader reader(whole);
        usage::Rollout inPieces = whole;
        m_lines.each(input, [&](std::string_view text) {
            usage::RolloutLine line;
            const bool isParsed = m_parsers.parse(text, line) == usage::LineOutcome::Parsed;
            if (isParsed && !line.hasImpossibleNumbers) {
                const auto time = timeOf(line);
                reader.add(line, time);
                if (isCutBefore(text)) {
                    auto kept = usage::unpackedRollout(packed(inPieces));
                    require(kept.has_value());
                    inPieces = std::move(*kept);
                }
                usage::RolloutReader(inPieces).add(line, time);
            }
            return isParsed;
        });
        require(packed(whole) == packed(inPieces));
        look(std::move(whole));
    }

private:
    /// Here and there.
    static bool isCutBefore(std::string_view line) { return line.size() % 3 == 0; }

    static std::optional<TimePoint> timeOf(const usage::RolloutLine &line)
    {
        usage::Skips skips;
        std::optional<TimePoint> again;
        return usage::timeOf(line.timestamp, now, skips, again);
    }

    static void look(usage::Rollout rollout)
    {
        usage::RolloutBook book;
        book.add(std::move(rollout));
        book.forEach(
            [](const usage::Answer &record) { require(record.time() >= usage::earliestTime); });
        for (const usage::RolloutSession &session : book.sessions()) {
            require(!nlohmann::json(session.title).dump().empty());
        }
        (void)book.limits(now);
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
