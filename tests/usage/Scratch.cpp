#include "usage/Scratch.h"

#include "usage/pricing/PriceFile.h"
#include "usage/statistics/Statistics.h"
#include "usage/statistics/StatsJson.h"

#include <cstdlib>
#include <fmt/format.h>
#include <fstream>

namespace fs = std::filesystem;

namespace {

std::string field(const char *key, const std::string &value)
{
    return value.empty() ? std::string() : fmt::format(R"("{}":"{}",)", key, value);
}

std::string joined(const std::vector<std::string> &lines)
{
    std::string content;
    for (const std::string &line : lines) {
        content += line + '\n';
    }
    return content;
}

} // namespace

Scratch::Scratch()
{
    std::string name = fs::temp_directory_path() / "kestrelbay-indexer.XXXXXX";
    m_root = mkdtemp(name.data());
}

Scratch::~Scratch()
{
    std::error_code ignored;
    fs::remove_all(m_root, ignored);
}

fs::path Scratch::write(const fs::path &file, const std::string &content) const
{
    fs::path whole = m_root / file;
    fs::create_directories(whole.parent_path());
    std::ofstream(whole, std::ios::binary) << content;
    return whole;
}

fs::path Scratch::transcript(const std::string &file, const std::vector<std::string> &lines) const
{
    return write("claude/projects/" + file, joined(lines));
}

fs::path Scratch::rollout(const std::string &name, const std::vector<std::string> &lines) const
{
    return write("codex/sessions/rollout-" + name + ".jsonl", joined(lines));
}

nlohmann::json Scratch::stats() const
{
    usage::History history;
    update(history);
    return nlohmann::json::parse(statsText(history));
}

void Scratch::update(usage::History &history) const
{
    history.update({claude(), codex()}, usage::builtInPrices(), testNow());
}

TimePoint testNow()
{
    using namespace std::chrono;
    return sys_days {year {2026} / November / 21} + hours {12};
}

std::string statsText(const usage::History &history)
{
    return usage::statsJson(
        usage::computeStatistics(history, usage::builtInPrices(), {}, testNow()));
}

std::string AnswerLine::line() const
{
    return fmt::format(R"({{{}{}"message":{{{}{}"content":[{{"type":"text","text":"…"}}],)"
                       R"("stop_reason":{},"usage":{{{}}}}},{}{}{}"type":"assistant"}})",
        field("sessionId", session), extra, field("id", id), field("model", model), stop, usage,
        field("timestamp", time), field("requestId", request), field("cwd", folder));
}

std::string prompt(const std::string &text, const std::string &time, const std::string &extra)
{
    return fmt::format(
        R"({{"type":"user","sessionId":"s1","timestamp":"{}",{}"message":{{"content":{}}}}})", time,
        extra, text);
}
