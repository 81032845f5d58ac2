#include "indexer/doctor/Doctor.h"

#include "indexer/terminal/Printable.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace indexer {

Findings examine(const Examined &examined)
{
    Findings all;
    for (const auto part : {examineDataFolder, examineStatistics, examineHistory, examinePrograms,
             examineAssistants}) {
        Findings found = part(examined);
        std::move(found.begin(), found.end(), std::back_inserter(all));
    }
    return all;
}

bool hasProblem(const Findings &findings)
{
    return std::any_of(findings.begin(), findings.end(),
        [](const Finding &finding) { return finding.severity == Severity::Problem; });
}

std::string findingsText(const Findings &findings, const Terminal &terminal)
{
    constexpr std::array<const char *, 3> words {"ok", "note", "problem"};
    constexpr std::array<Ink, 3> inks {Ink::Dim, Ink::Yellow, Ink::Red};
    std::string text;
    for (const Finding &finding : findings) {
        const auto severity = static_cast<std::size_t>(finding.severity);
        text += inked(fmt::format("{:<7}", words.at(severity)), inks.at(severity), terminal)
            + fmt::format("  {}\n", printable(finding.text));
        if (!finding.advice.empty()) {
            text += fmt::format("{:<7}  -> {}\n", "", printable(finding.advice));
        }
    }
    return text;
}

} // namespace indexer
