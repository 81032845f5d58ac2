#include "indexer/Scan.h"

#include "indexer/TranscriptTree.h"

namespace indexer {

namespace {

using namespace std::chrono;

/// Before this there was nothing to count.
constexpr TimePoint earliest = sys_days {year {2000} / January / 1};
/// Clocks differ, and so do zones; more than this is a mistake.
constexpr days tolerance {2};

bool statesUsage(const TranscriptLine &line)
{
    return line.kind == LineKind::Assistant && line.hasUsage && !line.isApiError
        && line.model != "<synthetic>";
}

} // namespace

Scan::Scan(TimePoint now)
    : m_latest(now + tolerance)
{
}

void Scan::addClaude(const std::filesystem::path &folder)
{
    for (const auto &file : findTranscripts(folder / "projects", m_skips)) {
        addFile(file);
    }
}

void Scan::addCodex(const std::filesystem::path &folder)
{
    for (const auto &file : findRollouts(folder, m_skips)) {
        addRollout(file);
    }
    m_rollouts.threads().addIndex(folder / "session_index.jsonl");
}

void Scan::addFile(const std::filesystem::path &file)
{
    TranscriptLine line;
    readFile(file, m_parser, line, [&] { addLine(line, file.native()); });
}

void Scan::addRollout(const std::filesystem::path &file)
{
    const std::string name = file.filename().native();
    m_rolloutReader.begin(std::string_view(name).substr(0, name.find(".jsonl")));
    RolloutLine line;
    readFile(file, m_rolloutParser, line, [&] {
        if (line.hasImpossibleNumbers) {
            m_skips.add(LineSkip::ImpossibleNumbers);
        } else {
            m_rolloutReader.add(line, timeOf(line.timestamp));
        }
    });
    m_rolloutReader.end();
}

/// Calls `take()` for each line that matters, as it stands in `line` then.
template <typename Parser, typename Line, typename Take>
void Scan::readFile(const std::filesystem::path &file, Parser &parser, Line &line, Take take)
{
    if (const auto problem = m_reader.open(file)) {
        m_skips.add(*problem);
        return;
    }
    ++m_files;
    while (const auto text = m_reader.next()) {
        switch (parser.parse(*text, line)) {
        case LineOutcome::Parsed:
            take();
            break;
        case LineOutcome::NotJson:
            m_skips.add(LineSkip::NotJson);
            break;
        case LineOutcome::Ignored:
            break;
        }
    }
    m_skips.add(LineSkip::TooLong, m_reader.overlong());
    if (m_reader.failed()) {
        m_skips.add(FileSkip::Unreadable);
    }
}

/// Nothing for a line that tells no time, or one that cannot be.
std::optional<TimePoint> Scan::timeOf(std::string_view timestamp)
{
    if (timestamp.empty()) {
        return std::nullopt;
    }
    const auto time = parseMoment(timestamp);
    if (!time || *time < earliest || *time > m_latest) {
        m_skips.add(LineSkip::ImpossibleTime);
        return std::nullopt;
    }
    return time;
}

void Scan::addLine(const TranscriptLine &line, std::string_view file)
{
    if (line.kind != LineKind::Assistant && line.kind != LineKind::User
        && line.kind != LineKind::System) {
        m_sessions.addTitle(line, file);
        return;
    }
    if (statesUsage(line) && line.hasImpossibleNumbers) {
        m_skips.add(LineSkip::ImpossibleNumbers);
        return;
    }
    const auto time = timeOf(line.timestamp);
    if (!time) {
        return;
    }
    m_sessions.addConversation(line, *time);
    if (statesUsage(line)) {
        addUsage(line, *time);
    }
}

void Scan::addUsage(const TranscriptLine &line, TimePoint time)
{
    if (!m_ledger.add(line, time)) {
        m_skips.add(LineSkip::NoIdentity);
    }
}

} // namespace indexer
