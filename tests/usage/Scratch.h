#pragma once

#include "formats/TimeStamp.h"
#include "usage/history/History.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

/// A folder of its own for each test, with a place for transcripts; removed afterwards.
class Scratch final {
public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch &) = delete;
    Scratch &operator=(const Scratch &) = delete;

    [[nodiscard]] const std::filesystem::path &root() const { return m_root; }
    [[nodiscard]] std::filesystem::path claude() const { return m_root / "claude"; }
    [[nodiscard]] std::filesystem::path codex() const { return m_root / "codex"; }

    std::filesystem::path write(
        const std::filesystem::path &file, const std::string &content) const;
    /// Writes a transcript below projects, each line with its end.
    std::filesystem::path transcript(
        const std::string &file, const std::vector<std::string> &lines) const;

    /// Writes a rollout of Codex likewise.
    std::filesystem::path rollout(
        const std::string &name, const std::vector<std::string> &lines) const;

    /// Brings a history up to date with what is there, with built-in prices, on the test's own day.
    void update(usage::History &history) const;
    /// The statistics file of what is there, with built-in prices, on the test's own day.
    [[nodiscard]] nlohmann::json stats() const;

private:
    std::filesystem::path m_root;
};

/// Noon on the Saturday that all tests are run on.
[[nodiscard]] TimePoint testNow();

/// What is written of a history on that day.
[[nodiscard]] std::string statsText(const usage::History &history);

/// An answer's line, to be varied field by field. The model costs 4 and 20 dollars a million, so
/// the usual usage costs 6 dollars.
struct AnswerLine {
    std::string id = "m1";
    std::string request = "r1";
    std::string session = "s1";
    std::string time = "2026-11-20T10:00:00.000Z";
    std::string model = "claude-opus-5-5";
    std::string folder = "/home/u/proj";
    std::string usage = R"("input_tokens":1000000,"output_tokens":100000)";
    std::string stop = "\"end_turn\"";
    std::string extra = {}; // more fields of the line, each with a comma behind it

    [[nodiscard]] std::string line() const;
};

[[nodiscard]] std::string prompt(
    const std::string &text, const std::string &time, const std::string &extra = {});
