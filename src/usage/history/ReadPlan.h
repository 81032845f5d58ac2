#pragma once

#include "usage/files/FileTree.h"
#include "usage/history/tables/FileTable.h"

#include <vector>

namespace usage {

/// A file that was found and is to be read.
struct PlannedFile {
    FoundFile found;
    Provider provider = Provider::Claude;
    const KnownFile *known = nullptr; // none for a new one
    bool isFromStart = false;         // whatever was read of it before
    bool isSame = false;              // this being read again by what it is known to hold still
    /// Others that once were at its path.
    std::vector<const KnownFile *> gone;
};

/// What is to be done to bring a history up to date with the files that there are.
struct ReadPlan {
    std::vector<PlannedFile> files;      // to be read, the largest first
    std::vector<const KnownFile *> gone; // to be marked as gone
    std::vector<const KnownFile *> back; // were marked so, and are there as they were
    std::vector<std::pair<const KnownFile *, std::string>> moved; // with the new path
    /// As they were, but for numbers that a device gets anew whenever it is mounted.
    std::vector<std::pair<const KnownFile *, FileIdentity>> same;

    [[nodiscard]] bool isEmpty() const
    {
        return files.empty() && gone.empty() && back.empty() && moved.empty() && same.empty();
    }
};

/// Where files were looked for, and what was found there.
struct FoundFiles {
    Provider provider = Provider::Claude;
    std::vector<std::string> folders;
    std::vector<FoundFile> files;
};

/// Compares what the history knows, which has to outlive the plan, with what there is.
[[nodiscard]] ReadPlan planReading(
    const std::vector<KnownFile> &known, const std::vector<FoundFiles> &found, TimePoint now);

} // namespace usage
