#pragma once

#include <chrono>
#include <cstddef>
#include <string>

/// What a transcript of the sample is to be like.
struct Session {
    std::string id;
    std::string folder; ///< the working directory
    std::chrono::sys_time<std::chrono::milliseconds> start;
    std::size_t bytes = 0; ///< about this long, at least one response
    bool isSubagent = false;
};

/// The moment as transcripts write it.
[[nodiscard]] std::string stamp(std::chrono::sys_time<std::chrono::milliseconds> time);
