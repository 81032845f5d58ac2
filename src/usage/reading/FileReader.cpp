#include "usage/reading/FileReader.h"

#include "usage/claude/TranscriptReader.h"
#include "usage/codex/RolloutPacking.h"
#include "usage/codex/RolloutReader.h"
#include "usage/values/PlausibleTime.h"

#include <vector>

namespace usage {

namespace {

/// A piece of so many answers, sessions or summaries is handed over, so that a file of any size
/// takes no more memory.
constexpr std::size_t mostInPiece = 8'000;

/// Whether all of a file can be read.
bool isWhole(const std::filesystem::path &file)
{
    constexpr std::size_t chunk = std::size_t {64} << 10U;
    std::vector<char> buffer(chunk);
    ByteSource source;
    std::optional<std::size_t> got;
    if (!source.open(file)) {
        do {
            got = source.read(buffer.data(), buffer.size());
        } while (got.value_or(0) > 0);
    }
    return got.has_value();
}

} // namespace

FileReader::FileReader(TimePoint now, LongLineParsers &longLines, Take take)
    : m_now(now)
    , m_longLines(longLines)
    , m_take(std::move(take))
{
}

std::optional<FileSkip> FileReader::read(const FileTask &task)
{
    if (const auto problem = m_reader.open(task.path)) {
        return problem;
    }
    FilePiece piece {.file = task.file, .isFresh = !goOn(task)};
    if (piece.isFresh && task.isKnown && !isWhole(task.path)) {
        return FileSkip::Unreadable; // better what it told before than less
    }
    const bool isRead = task.provider == Provider::Codex ? readRollout(task, std::move(piece))
                                                         : readTranscript(std::move(piece));
    return isRead && !m_reader.failed() ? std::nullopt : std::optional(FileSkip::Unreadable);
}

/// Goes to where an earlier run stopped if the bytes up to there are still the same.
bool FileReader::goOn(const FileTask &task)
{
    const ByteSource &source = m_reader.source();
    // A transcript that was emptied begins anew, so that its sessions are told anew as well.
    const bool isBegun = task.provider == Provider::Codex || (task.from && task.from->place > 0);
    return task.from && isBegun && !source.isCompressed()
        && source.identity().isSameFile(task.from->identity)
        && source.identity().size >= task.from->identity.size
        && source.guardBefore(task.from->place) == task.from->guard
        && m_reader.skipTo(task.from->place);
}

bool FileReader::readTranscript(FilePiece piece)
{
    const std::int64_t file = piece.file;
    for (bool isAtEnd = false; !isAtEnd;) {
        TranscriptPiece told;
        TranscriptReader reader(told, m_now);
        TranscriptLine line;
        isAtEnd = eachLine(line, told.skips, [&] {
            reader.add(line);
            return told.answers.size() < mostInPiece && told.names.size() < mostInPiece
                && told.summaries.size() < mostInPiece;
        });
        piece.skips = told.skips;
        piece.again = told.again;
        piece.told = std::move(told);
        if (!hand(std::move(piece), isAtEnd)) {
            return true;
        }
        piece = FilePiece {.file = file};
    }
    return true;
}

bool FileReader::readRollout(const FileTask &task, FilePiece piece)
{
    const std::string name = task.path.filename().native();
    auto rollout = piece.isFresh ? std::nullopt : unpackedRollout(task.rollout);
    if (!rollout) {
        // Also when what was kept cannot be understood any more.
        if (!piece.isFresh && !m_reader.skipTo(0)) {
            return false;
        }
        piece.isFresh = true;
        rollout = startRollout(std::string_view(name).substr(0, name.find(".jsonl")));
    }
    // Its reader's index of all records is gone before they are packed, and go into the history.
    const bool isAtEnd = readLines(*rollout, piece);
    piece.told = std::move(*rollout);
    return isAtEnd && hand(std::move(piece), true);
}

bool FileReader::readLines(Rollout &rollout, FilePiece &piece)
{
    RolloutReader reader(rollout);
    RolloutLine line;
    m_lines = 0;
    return eachLine(line, piece.skips, [&] {
        if (line.hasImpossibleNumbers) {
            piece.skips.add(LineSkip::ImpossibleNumbers);
        } else if (line.timestamp.empty() && !line.hasUsage) {
            reader.add(line, std::nullopt);
        } else {
            if (line.kind == RolloutKind::SessionMeta && !line.id.empty() && piece.isFresh
                && m_lines == 1 && m_reader.overlong() == 0) {
                rollout.isNamed = false; // a front that is whole goes before the file's name
            }
            reader.add(line, timeOf(line.timestamp, m_now, piece.skips, piece.again));
        }
        return true;
    });
}

/// A file that was not read to its end must not look like one that was: the run may end here, and
/// what could not be read this time is tried again the next time.
bool FileReader::hand(FilePiece piece, bool isLast)
{
    const ByteSource &source = m_reader.source();
    const std::uint64_t place = source.isCompressed() ? source.identity().size : m_reader.place();
    piece.mark = {source.identity(), place, source.guardBefore(place).value_or(0)};
    if (!isLast || m_reader.failed()) {
        piece.mark.identity.size = place;
        piece.mark.identity.modified = 0;
    }
    return m_take(std::move(piece));
}

/// Calls `add()` for each line that matters, as it stands in `line` then, until it has enough: then
/// the file is not read to its end, and the result is false.
template <typename Line, typename Add> bool FileReader::eachLine(Line &line, Skips &skips, Add add)
{
    const std::size_t overlong = m_reader.overlong();
    bool hasRoom = true;
    const auto take = [&](LineParsers &parsers, std::string_view text) {
        const LineOutcome outcome = parsers.parse(text, line);
        if (outcome == LineOutcome::Parsed) {
            hasRoom = add();
        } else if (outcome == LineOutcome::NotJson) {
            skips.add(LineSkip::NotJson);
        }
    };
    while (hasRoom) {
        const auto text = m_reader.next();
        if (!text) {
            break;
        }
        ++m_lines;
        if (text->size() <= LongLineParsers::beyond) {
            take(m_parsers, *text);
        } else {
            const std::lock_guard guard(m_longLines.lock);
            if (!m_longLines.parsers) {
                m_longLines.parsers.emplace(LineReader::longestLine);
            }
            take(*m_longLines.parsers, *text);
        }
    }
    skips.add(LineSkip::TooLong, m_reader.overlong() - overlong);
    return hasRoom;
}

} // namespace usage
