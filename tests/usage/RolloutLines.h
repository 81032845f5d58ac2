#pragma once

#include "usage/codex/RolloutBook.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

// Lines of Codex's rollouts, at minutes of an hour of the morning; all in JSON, without ends.

/// Counts in the order of input, cached, written to the cache, output and reasoning.
using Counts = std::array<int, 5>;

/// A rollout by the id in its name.
struct RolloutLines {
    std::string name;
    std::vector<std::string> lines;
};

[[nodiscard]] std::string at(int minute, const std::string &rest);
[[nodiscard]] std::string meta(
    const std::string &id, const std::string &extra = {}, int minute = 0);
[[nodiscard]] std::string forkOf(const std::string &id);
[[nodiscard]] std::string spawnedBy(const std::string &id);
[[nodiscard]] std::string turn(const std::string &id, const std::string &model);
[[nodiscard]] std::string settings(const std::string &fields);
[[nodiscard]] std::string prompt(int minute, const std::string &text);
[[nodiscard]] std::string usageJson(const Counts &counts);
[[nodiscard]] std::string total(int minute, const Counts &counts);
[[nodiscard]] std::string record(int minute, const std::string &thread, const std::string &response,
    const Counts &counts, const std::string &turn = "t1");
/// Reads a file; in pieces of a line each, every one of them from what was kept of those before.
[[nodiscard]] usage::Rollout read(const RolloutLines &file, bool inPieces);
/// Calls `check(book)` with the files in either order, read at once or in pieces.
void withBooks(
    std::vector<RolloutLines> files, const std::function<void(const usage::RolloutBook &)> &check);
/// What was used, as "minute session model fresh/read/written/output", in order, with a mark for
/// what was fast (!) or flexible (?), and where something is missing (+).
[[nodiscard]] std::string used(const usage::RolloutBook &book);
