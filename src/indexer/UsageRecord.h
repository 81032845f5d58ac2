#pragma once

#include "indexer/Moment.h"
#include "indexer/TextPool.h"
#include "indexer/Usage.h"

namespace indexer {

/// Which of an answer's lines speaks for it: where and when it was given, and by which model.
struct Origin {
    bool isForked = false; // the line was copied from another session
    TimePoint time {};
    TextId session = 0;
    TextId model = 0;
    TextId folder = 0; // the working directory
};

/// One answer of a model, put together from all lines that tell of it.
struct UsageRecord {
    Usage usage;
    Origin origin;
    TextId request = 0;
    Speed speed = Speed::Standard;
    ServiceTier tier = ServiceTier::Standard;
    bool isSidechain = false;
    bool isFinished = false;

    /// A subagent's answer whose last line was never written: its output is known too low.
    [[nodiscard]] bool isIncomplete() const { return isSidechain && !isFinished; }
};

} // namespace indexer
