#pragma once

#include "usage/reading/FileTask.h"

#include <functional>
#include <vector>

namespace usage {

/// Told of what is done, in bytes, and of all that there is to do.
using ProgressTold = std::function<void(std::uint64_t done, std::uint64_t all)>;

/// Reads files on all processors. The pieces of each come in their order, to the thread that asks;
/// files that could not be read go into the skips.
class ParallelReader final {
public:
    /// Takes a piece; false to end early.
    using Take = std::function<bool(FilePiece &&)>;

    explicit ParallelReader(TimePoint now, ProgressTold progress = {});

    [[nodiscard]] const Skips &skips() const { return m_skips; }

    void read(const std::vector<FileTask> &tasks, const Take &take);

private:
    void readAlone(const std::vector<FileTask> &tasks, const Take &take);
    void readTogether(const std::vector<FileTask> &tasks, const Take &take);
    void tell(std::uint64_t done, std::uint64_t all) const;

    TimePoint m_now;
    ProgressTold m_progress;
    Skips m_skips;
};

} // namespace usage
