#pragma once

#include "usage/lines/LineReader.h"
#include "usage/reading/FileTask.h"
#include "usage/reading/LineParsers.h"

#include <functional>

namespace usage {

/// Reads files, one after another, through one buffer.
class FileReader final {
public:
    /// Takes a piece; false to be given no more.
    using Take = std::function<bool(FilePiece &&)>;

    FileReader(TimePoint now, LongLineParsers &longLines, Take take);

    /// Reads what a task asks for, and tells why that is not possible, if so. A file that cannot be
    /// opened gives no piece, so that what is known of it stays.
    [[nodiscard]] std::optional<FileSkip> read(const FileTask &task);

private:
    [[nodiscard]] bool goOn(const FileTask &task);
    [[nodiscard]] bool readTranscript(FilePiece piece);
    [[nodiscard]] bool readRollout(const FileTask &task, FilePiece piece);
    [[nodiscard]] bool readLines(Rollout &rollout, FilePiece &piece);
    [[nodiscard]] bool hand(FilePiece piece, bool isLast);
    template <typename Line, typename Add>
    [[nodiscard]] bool eachLine(Line &line, Skips &skips, Add add);

    TimePoint m_now;
    LongLineParsers &m_longLines;
    Take m_take;
    LineReader m_reader;
    std::size_t m_lines = 0; // of the file, so far
    LineParsers m_parsers {LongLineParsers::beyond};
};

} // namespace usage
