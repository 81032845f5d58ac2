#pragma once

#include <string>
#include <vector>

namespace indexer {

/// How much a finding matters.
enum class Severity { Ok, Note, Problem };

/// Something that was looked at, and what to do about it.
struct Finding {
    Severity severity = Severity::Ok;
    std::string text;
    std::string advice; // empty where there is nothing to do
};

using Findings = std::vector<Finding>;

} // namespace indexer
