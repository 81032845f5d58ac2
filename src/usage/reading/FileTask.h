#pragma once

#include "usage/claude/TranscriptPiece.h"
#include "usage/codex/Rollout.h"
#include "usage/files/FileIdentity.h"
#include "usage/values/Provider.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace usage {

/// Up to where a file was read, and what tells that it is still the same up to there.
struct ReadMark {
    FileIdentity identity;
    std::uint64_t place = 0;
    std::uint64_t guard = 0;
};

/// A file to be read, from where an earlier run left it if that is told.
struct FileTask {
    std::int64_t file = 0; // its number in the history
    Provider provider = Provider::Claude;
    std::filesystem::path path;
    std::uint64_t size = 0; // as far as it is known
    bool isKnown = false;   // an earlier run read something of it
    std::optional<ReadMark> from;
    std::string rollout; // what that run kept of one of Codex's files
};

/// What was read of a file at a stretch. Only the last piece of a file brings a rollout.
struct FilePiece {
    std::int64_t file = 0;
    /// Whether the file was read from its beginning: what it told before holds no more.
    bool isFresh = false;
    ReadMark mark;
    std::variant<TranscriptPiece, Rollout> told;
    Skips skips;
    std::optional<TimePoint> again; // when a line that lies in the future now would count
};

} // namespace usage
