#include "indexer/report/StatusText.h"

#include "indexer/terminal/FigureText.h"
#include "indexer/terminal/Printable.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace indexer {

using namespace usage;

namespace {

using Json = nlohmann::ordered_json;

std::string filesText(const HistorySummary &facts)
{
    const std::string all = grouped(facts.files) + (facts.files == 1 ? " file" : " files");
    return facts.vanishedFiles == 0
        ? all
        : fmt::format("{}, {} of them gone but still counted", all, grouped(facts.vanishedFiles));
}

std::string lastRunText(const HistorySummary &facts, TimePoint now)
{
    if (!facts.lastRun) {
        return "never";
    }
    const std::string clock = clockText(*facts.lastRun, now);
    return *facts.lastRun > now ? clock + " (ahead of this computer's clock)"
                                : fmt::format("{} ({} ago)", clock, spanText(now - *facts.lastRun));
}

std::string skippedText(const Skips &skips)
{
    constexpr std::string_view verb = "skipped ";
    const std::string sentence = skips.sentence();
    return sentence.empty() ? "nothing" : sentence.substr(verb.size());
}

Json skipsJson(const Skips &skips)
{
    const auto lines = [&skips](LineSkip reason) { return skips.count(reason); };
    const auto files = [&skips](FileSkip reason) { return skips.count(reason); };
    return {
        {"lines",
            {{"tooLong", lines(LineSkip::TooLong)}, {"notJson", lines(LineSkip::NotJson)},
                {"impossibleNumbers", lines(LineSkip::ImpossibleNumbers)},
                {"impossibleTime", lines(LineSkip::ImpossibleTime)},
                {"noIdentity", lines(LineSkip::NoIdentity)}}},
        {"files",
            {{"notRegular", files(FileSkip::NotRegular)}, {"loop", files(FileSkip::Loop)},
                {"unreadable", files(FileSkip::Unreadable)}}},
    };
}

} // namespace

std::string statusText(const HistorySummary &facts, TimePoint now, const Terminal &terminal)
{
    const std::pair<const char *, std::string> rows[] = {
        {"History", fmt::format("{} ({})", facts.file.native(), bytesText(facts.bytes))},
        {"Since", facts.since ? dayText(*facts.since) : "nothing is stored yet"},
        {"Answers", grouped(facts.answers)},
        {"Sessions", grouped(facts.sessions)},
        {"Transcripts", filesText(facts)},
        {"Last run", lastRunText(facts, now)},
        {"Skipped", skippedText(facts.skips)},
    };
    std::string text;
    for (const auto &[name, value] : rows) {
        text += inked(fmt::format("{:<11}", name), Ink::Bold, terminal) + "  " + printable(value)
            + '\n';
    }
    if (facts.isIncomplete) {
        text +=
            "\nThe sums are not up to date: a run was broken off, and the next one mends that.\n";
    }
    return text;
}

std::string statusJson(const HistorySummary &facts)
{
    constexpr int indent = 2;
    const Json json {
        {"file", printable(facts.file.native())},
        {"bytes", facts.bytes},
        {"since", facts.since ? Json(dayText(*facts.since)) : Json(nullptr)},
        {"answers", facts.answers},
        {"sessions", facts.sessions},
        {"files", facts.files},
        {"vanishedFiles", facts.vanishedFiles},
        {"lastRun", facts.lastRun ? Json(TimeStamp::text(*facts.lastRun)) : Json(nullptr)},
        {"incomplete", facts.isIncomplete},
        {"skipped", skipsJson(facts.skips)},
    };
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace indexer
