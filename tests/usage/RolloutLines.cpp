#include "usage/RolloutLines.h"

#include "usage/codex/RolloutPacking.h"
#include "usage/codex/RolloutParser.h"
#include "usage/codex/RolloutReader.h"
#include "usage/lines/LineReader.h"

#include <algorithm>
#include <fmt/format.h>
#include <gtest/gtest.h>

using namespace usage;

std::string at(int minute, const std::string &rest)
{
    return fmt::format(R"({{"timestamp":"2026-11-20T09:{:02}:00.000Z",{}}})", minute, rest);
}

std::string meta(const std::string &id, const std::string &extra, int minute)
{
    return at(minute,
        fmt::format(R"("type":"session_meta","payload":{{"id":"{}",{}"cwd":"/home/u/{}"}})", id,
            extra, id));
}

std::string forkOf(const std::string &id)
{
    return fmt::format(R"("forked_from_id":"{}",)", id);
}

std::string spawnedBy(const std::string &id)
{
    return fmt::format(
        R"("source":{{"subagent":{{"thread_spawn":{{"parent_thread_id":"{}"}}}}}},)", id);
}

std::string turn(const std::string &id, const std::string &model)
{
    return at(1,
        fmt::format(
            R"("type":"turn_context","payload":{{"turn_id":"{}","model":"{}"}})", id, model));
}

std::string settings(const std::string &fields)
{
    return at(1,
        fmt::format(R"("type":"event_msg","payload":{{"type":"thread_settings_applied",)"
                    R"("thread_settings":{{{}}}}})",
            fields));
}

std::string prompt(int minute, const std::string &text)
{
    return at(minute,
        fmt::format(
            R"("type":"event_msg","payload":{{"type":"user_message","message":"{}"}})", text));
}

std::string usageJson(const Counts &counts)
{
    return fmt::format(R"({{"input_tokens":{},"cached_input_tokens":{},)"
                       R"("cache_write_input_tokens":{},"output_tokens":{},)"
                       R"("reasoning_output_tokens":{}}})",
        counts[0], counts[1], counts[2], counts[3], counts[4]);
}

std::string total(int minute, const Counts &counts)
{
    return at(minute,
        fmt::format(R"("type":"event_msg","payload":{{"type":"token_count",)"
                    R"("info":{{"total_token_usage":{}}}}})",
            usageJson(counts)));
}

std::string record(int minute, const std::string &thread, const std::string &response,
    const Counts &counts, const std::string &turn)
{
    return at(minute,
        fmt::format(R"("type":"token_usage_record","payload":{{"thread_id":"{}","turn_id":"{}",)"
                    R"("response_id":"{}","usage":{}}})",
            thread, turn, response, usageJson(counts)));
}

Rollout read(const RolloutLines &file, bool inPieces)
{
    static JsonLine json {LineReader::longestLine};
    RolloutParser parser(json);
    RolloutLine line;
    Rollout rollout = startRollout("rollout-" + file.name);
    RolloutReader whole(rollout);
    for (const std::string &text : file.lines) {
        const std::string padded = text + std::string(LineReader::padding, ' ');
        if (parser.parse(std::string_view(padded).substr(0, text.size()), line)
            != LineOutcome::Parsed) {
            continue;
        }
        if (inPieces) {
            rollout = unpackedRollout(packed(rollout)).value_or(Rollout {});
            RolloutReader(rollout).add(line, TimeStamp::parse(line.timestamp));
        } else {
            whole.add(line, TimeStamp::parse(line.timestamp));
        }
    }
    return rollout;
}

void withBooks(
    std::vector<RolloutLines> files, const std::function<void(const RolloutBook &)> &check)
{
    for (const bool inPieces : {false, true}) {
        RolloutBook book;
        for (const RolloutLines &file : files) {
            book.add(read(file, inPieces));
            EXPECT_EQ(packed(read(file, inPieces)), packed(read(file, false)));
        }
        check(book);
        std::reverse(files.begin(), files.end());
    }
}

std::string used(const RolloutBook &book)
{
    std::vector<std::string> rows;
    book.forEach([&](const Answer &each) {
        const TextPool &names = book.names();
        rows.push_back(fmt::format("{} {} {} {}/{}/{}/{}{}{}{}",
            TimeStamp::text(each.time()).substr(14, 2), names.text(each.session.text),
            names.text(each.model.text), each.usage.input, each.usage.cacheRead,
            each.usage.cacheWrite(), each.usage.output, each.speed == Speed::Fast ? "!" : "",
            each.tier == ServiceTier::Batch ? "?" : "", each.isIncomplete() ? "+" : ""));
    });
    std::sort(rows.begin(), rows.end());
    return fmt::format("{}", fmt::join(rows, ", "));
}
