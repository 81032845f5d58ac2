#pragma once

#include "formats/TimeStamp.h"
#include "indexer/CommandLine.h"

#include <string>

namespace indexer {

/// What a run leaves for the terminal.
struct Outcome {
    int status = 0;
    std::string output;
    std::string messages; // whole lines for standard error
};

/// Does what was asked for, as of `now`.
[[nodiscard]] Outcome run(const Options &options, TimePoint now);

} // namespace indexer
