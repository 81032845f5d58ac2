#include "usage/RolloutLines.h"

#include <gtest/gtest.h>

namespace {

using namespace usage;
using File = RolloutLines;

const std::string first = total(2, {100, 40, 10, 5});
const std::string second = total(3, {300, 140, 10, 15});
const std::string third = total(4, {500, 240, 10, 25});
const std::string modelN = R"("model":"n","service_tier":null)";
const std::string threadA = "01990000-0000-7000-8000-00000000000a";
const std::string threadB = "01990000-0000-7000-8000-00000000000b";

TEST(Rollouts, countEveryTokenOnce)
{
    const std::string info =
        at(3, R"("type":"event_msg","payload":{"type":"token_count","info":null})");
    const struct {
        const char *rule;
        std::vector<File> files;
        const char *expected;
    } rows[] = {
        {"totals grow, are repeated, fall and recover",
            {{"a",
                {meta("a"), turn("t1", "m"), info, first, first, total(4, {0, 0, 0, 0}),
                    total(5, {50, 10, 0, 7}), second}}},
            "02 a m 50/40/10/5, 03 a m 100/100/0/8, 05 a m 0/0/0/2"},
        {"records go before totals, whose own past counts",
            {{"a",
                {meta("a"), turn("t1", "m"), first, record(3, "a", "r1", {200, 100, 0, 10}), second,
                    record(4, "a", "r1", {200, 100, 0, 10})}}},
            "02 a m 50/40/10/5, 03 a m 100/100/0/10"},
        {"a fork holds its parent's totals, stamped anew",
            {{"a", {meta("a"), turn("t1", "m"), first, second}},
                {"b",
                    {meta("b", forkOf("a")), meta("a"), turn("t1", "m"), total(8, {100, 40, 10, 5}),
                        settings(modelN), total(8, {300, 140, 10, 15}), turn("t2", "m"),
                        total(9, {400, 140, 10, 20})}},
                {"empty",
                    {meta("empty", forkOf("b")), meta("b", forkOf("a")), total(9, {100, 40, 10, 5}),
                        total(9, {400, 140, 10, 20})}}},
            "02 a m 50/40/10/5, 03 a m 100/100/0/10, 09 b m 100/0/0/5"},
        {"forks of a thread whose file is gone share what they copied",
            {{"b", {meta("b", forkOf("a")), meta("a"), turn("t1", "m"), first}},
                {"c", {meta("c", forkOf("a"), 1), turn("t1", "m"), first, second}}},
            "02 b m 50/40/10/5, 03 c m 100/100/0/10"},
        {"a subagent works in its parent's session, and copies are its parent's",
            {{"a", {meta("a"), turn("t1", "m"), record(2, "a", "r1", {100, 40, 10, 5}), first}},
                {"b",
                    {meta("b", spawnedBy("a")), meta("a"), turn("t1", "m"), first,
                        record(3, "b", "r2", {10, 0, 0, 1})}},
                {"c",
                    {meta("c", spawnedBy("b")), record(8, "c", "r1", {100, 40, 10, 5}),
                        turn("t9", "n"), record(4, "c", "r3", {20, 0, 0, 2})}}},
            "02 a m 50/40/10/5, 03 a m 10/0/0/1, 04 a n 20/0/0/2"},
        {"threads that are not related may have equal counts",
            {{"a", {meta("a"), turn("t1", "m"), first}},
                {"b", {meta("b"), turn("t1", "m"), first}}},
            "02 a m 50/40/10/5, 02 b m 50/40/10/5"},
        {"a response has the model of its own turn, as changed last",
            {{"a",
                {meta("a"), settings(R"("model":"z")"), turn("t1", "m"), settings(modelN),
                    record(2, "a", "r1", {1, 0, 0, 1}), turn("t2", "o"),
                    record(3, "a", "r2", {2, 0, 0, 2}), record(4, "a", "r3", {3, 0, 0, 3}, "t2"),
                    record(5, "a", "r4", {4, 0, 0, 4}, "untold"),
                    record(6, "a", "r5", {5, 0, 0, 5}, "")}}},
            "02 a n 1/0/0/1, 03 a n 2/0/0/2, 04 a o 3/0/0/3, 05 a o 4/0/0/4, 06 a o 5/0/0/5"},
        {"the tier stays until another is told, and what was ordered before has its own",
            {{"a",
                {meta("a"), turn("t1", "m"), settings(R"("service_tier":"priority")"),
                    record(2, "a", "r1", {1, 0, 0, 1}), settings(R"("model":"n")"),
                    record(3, "a", "r2", {2, 0, 0, 2}), settings(R"("service_tier":"flex")"),
                    record(4, "a", "r3", {3, 0, 0, 3}), settings(R"("service_tier":null)"),
                    record(5, "a", "r4", {4, 0, 0, 4}), record(6, "a", "r1", {1, 0, 0, 1})}}},
            "02 a m 1/0/0/1!, 03 a n 2/0/0/2!, 04 a n 3/0/0/3?, 05 a n 4/0/0/4"},
        {"a total may stand before its record; what has none is known to be missing",
            {{"a",
                {meta("a"), turn("t1", "m"), first, second, record(4, "a", "r1", {200, 100, 0, 10}),
                    total(5, {400, 140, 10, 20}), record(6, "a", "r2", {100, 0, 0, 5}),
                    total(7, {500, 140, 10, 25}), record(8, "a", "r3", {100, 0, 0, 6}),
                    total(8, {600, 140, 10, 31})}}},
            "02 a m 50/40/10/5, 04 a m 100/100/0/10, 06 a m 100/0/0/5, 07 a m 0/0/0/0+, "
            "08 a m 100/0/0/6"},
        {"what others' records tell of, and all in front of it, are copies, parent or no parent",
            {{"b",
                 {meta("b", forkOf("gone")), meta("gone"), turn("t1", "m"),
                     record(2, "gone", "r1", {100, 40, 10, 5}), first,
                     record(3, "gone", "r2", {200, 100, 0, 10}), second,
                     record(4, "b", "r3", {200, 100, 0, 10}), third}},
                {"empty",
                    {meta("empty", forkOf("gone")), meta("gone"), turn("t1", "m"),
                        record(5, "gone", "r1", {100, 40, 10, 5}), first}},
                {"older",
                    {meta("older", spawnedBy("gone")), turn("t1", "m"),
                        record(2, "gone", "r1", {100, 40, 10, 5}), first,
                        total(6, {150, 40, 10, 7}), record(7, "older", "r4", {1, 0, 0, 1})}}},
            "02 gone m 50/40/10/5, 03 gone m 100/100/0/10, 04 b m 100/100/0/10, "
            "06 gone m 50/0/0/2, 07 gone m 1/0/0/1"},
        {"copied totals from before the first record count once, for the thread that is lost",
            {{"b",
                 {meta("b", forkOf("gone")), turn("t1", "m"), first,
                     record(3, "gone", "r1", {200, 100, 0, 10}), second,
                     record(4, "b", "r2", {1, 0, 0, 1}), total(4, {301, 140, 10, 16})}},
                {"c",
                    {meta("c", spawnedBy("gone"), 1), turn("t1", "m"), first, second,
                        record(5, "c", "r3", {2, 0, 0, 2}), total(5, {302, 140, 10, 17})}},
                {"d", {meta("d", forkOf("gone")), turn("t1", "m"), first}}},
            "02 gone m 50/40/10/5, 03 gone m 100/100/0/10, 04 b m 1/0/0/1, 05 gone m 2/0/0/2"},
        {"of a fork's totals before its records, those that are no copies are its own",
            {{"a", {meta("a"), turn("t1", "m"), first}},
                {"b",
                    {meta("b", forkOf("a")), turn("t1", "m"), first, second,
                        record(4, "b", "r1", {200, 100, 0, 10}), third}},
                {"c",
                    {meta("c", forkOf("gone")), turn("t1", "m"), second,
                        record(5, "c", "r2", {2, 0, 0, 2})}}},
            "02 a m 50/40/10/5, 03 b m 100/100/0/10, 03 gone m 150/140/10/15, "
            "04 b m 100/100/0/10, 05 c m 2/0/0/2"},
        {"files of one thread are put together",
            {{"a", {meta("a"), turn("t1", "m"), first, record(5, "a", "r1", {1, 0, 0, 1})}},
                {"moved",
                    {meta("a"), turn("t1", "m"), first, second, total(7, {900, 140, 10, 15})}},
                {"copy",
                    {meta("a"), turn("t1", "m"), record(6, "a", "r2", {2, 0, 0, 2}),
                        record(6, "a", "r1", {1, 0, 0, 2})}}},
            "02 a m 50/40/10/5, 03 a m 100/100/0/10, 05 a m 1/0/0/2, 06 a m 2/0/0/2, "
            "07 a m 600/0/0/0"},
        {"where they part, they count like forks",
            {{"a", {meta("a"), turn("t1", "m"), first, second, third}},
                {"cut", {meta("a"), turn("t1", "m"), first, total(6, {110, 40, 10, 6})}},
                {"beheaded", {meta("a"), turn("t1", "m"), second, total(7, {310, 140, 10, 16})}},
                {"b",
                    {meta("b", forkOf("a")), turn("t1", "m"), first, total(6, {110, 40, 10, 6})}}},
            "02 a m 50/40/10/5, 03 a m 100/100/0/10, 04 a m 100/100/0/10, 06 a m 10/0/0/1, "
            "07 a m 10/0/0/1"},
        {"a torn front leaves the file to the thread that its name tells",
            {{"a-" + threadA, {meta(threadA), turn("t1", "m"), first}},
                {"b-" + threadB, {"{torn", meta(threadA), turn("t1", "m"), first, second}}},
            "02 01990000-0000-7000-8000-00000000000a m 50/40/10/5, "
            "03 01990000-0000-7000-8000-00000000000b m 100/100/0/10"},
        {"the oldest thread's earliest line tells the settings",
            {{"a", {meta("a"), turn("t1", "m"), record(5, "a", "r1", {1, 0, 0, 1})}},
                {"copy", {meta("a"), turn("t1", "k"), record(6, "a", "r1", {1, 0, 0, 1})}},
                {"b",
                    {meta("b", forkOf("a")), turn("t1", "o"), record(4, "b", "r1", {1, 0, 0, 1})}},
                {"c",
                    {meta("c", forkOf("a")), turn("t1", "p"), record(3, "c", "r1", {1, 0, 0, 1})}}},
            "03 a m 1/0/0/1"},
        {"siblings may have equal totals, and totals differ by their reasoning",
            {{"a", {meta("a"), turn("t1", "m"), total(1, {300, 140, 10, 15, 9})}},
                {"b", {meta("b", spawnedBy("a")), turn("t1", "m"), first, second}},
                {"c", {meta("c", spawnedBy("a")), turn("t1", "m"), second}}},
            "01 a m 150/140/10/15, 02 a m 50/40/10/5, 03 a m 100/100/0/10, 03 a m 150/140/10/15"},
        {"no more is cached than there was, and a type stands behind an object",
            {{"a",
                {meta("a"), turn("t1", "m"),
                    at(2,
                        R"("git":{"type":"branch"},"type":"token_usage_record",)"
                        R"("payload":{"response_id":"r1","usage":{"input_tokens":100,)"
                        R"("cached_input_tokens":90,"cache_write_input_tokens":20}})")}}},
            "02 a m 0/90/10/0"},
    };
    for (const auto &row : rows) {
        withBooks(row.files,
            [&row](const RolloutBook &book) { EXPECT_EQ(used(book), row.expected) << row.rule; });
    }
}

} // namespace
