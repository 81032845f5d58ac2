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

void Scan::addFile(const std::filesystem::path &file)
{
    if (const auto problem = m_reader.open(file)) {
        m_skips.add(*problem);
        return;
    }
    ++m_files;
    TranscriptLine parsed;
    while (const auto line = m_reader.next()) {
        switch (m_parser.parse(*line, parsed)) {
        case LineOutcome::Parsed:
            addLine(parsed, file.native());
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
    if (line.timestamp.empty()) {
        return;
    }
    const auto time = parseMoment(line.timestamp);
    if (!time || *time < earliest || *time > m_latest) {
        m_skips.add(LineSkip::ImpossibleTime);
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
