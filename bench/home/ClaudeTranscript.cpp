#include "home/ClaudeTranscript.h"

#include "home/Lengths.h"

#include <array>
#include <fmt/format.h>

namespace {

constexpr std::array<std::string_view, 4> models {
    "claude-opus-5", "claude-sonnet-5", "claude-opus-4-8", "claude-haiku-4-5-20251001"};
constexpr double shortResults = 0.77;

} // namespace

ClaudeTranscript::ClaudeTranscript(const Prose &prose, Dice &dice, const Session &session)
    : m_prose(prose)
    , m_dice(dice)
    , m_session(session)
    , m_common(fmt::format(R"("isSidechain":{},"userType":"external","cwd":"{}","sessionId":"{}",)"
                           R"("version":"2.1.290","gitBranch":"main",)",
          session.isSubagent, session.folder, session.id))
    , m_now(session.start)
{
}

std::string ClaudeTranscript::write()
{
    m_text.reserve(m_session.bytes + m_session.bytes / 4);
    prompt();
    do {
        response();
        // As many that people would call events as there are lines of answers, and half as many.
        for (std::uint64_t lines = m_dice.whole(1, 5); lines > 0; --lines) {
            switch (m_dice.whole(0, 9)) {
            case 0:
                prompt();
                break;
            case 1:
                turnDuration();
                break;
            default:
                toolResult();
                break;
            }
        }
    } while (m_text.size() < m_session.bytes);
    title();
    return std::move(m_text);
}

void ClaudeTranscript::beginLine()
{
    m_now += std::chrono::milliseconds(m_dice.whole(20, 9'000));
    m_text.append(R"({"parentUuid":)");
    m_text.append(m_last.empty() ? "null" : '"' + m_last + '"').append(",").append(m_common);
    m_last = m_dice.uuid();
}

void ClaudeTranscript::endLine(std::string_view type)
{
    fmt::format_to(std::back_inserter(m_text), R"("type":"{}","uuid":"{}","timestamp":"{}"}})",
        type, m_last, stamp(m_now));
    m_text.append("\n");
}

void ClaudeTranscript::prompt()
{
    beginLine();
    const auto words = static_cast<std::size_t>(m_dice.between(20, 900));
    m_text.append(R"("message":{"role":"user","content":")")
        .append(m_prose.text(m_dice, words))
        .append(R"("},)");
    endLine("user");
}

void ClaudeTranscript::toolResult()
{
    beginLine();
    const std::size_t length = lengthOfInput(m_dice, shortResults, room());
    fmt::format_to(std::back_inserter(m_text),
        R"("message":{{"role":"user","content":[{{"tool_use_id":"toolu_01{}","type":"tool_result",)",
        m_dice.hex(22));
    constexpr std::size_t ofPictures = 100'000;
    if (length > ofPictures && m_dice.share() < 0.5) {
        m_text.append(R"("content":[{"type":"image","source":{"type":"base64","data":")")
            .append(m_prose.encoded(m_dice, length))
            .append(R"("}}]}]},)");
    } else {
        m_text.append(R"("content":")").append(m_prose.text(m_dice, length)).append(R"("}]},)");
    }
    endLine("user");
}

void ClaudeTranscript::turnDuration()
{
    beginLine();
    fmt::format_to(std::back_inserter(m_text),
        R"("subtype":"turn_duration","durationMs":{},"isMeta":false,)", m_dice.whole(900, 90'000));
    endLine("system");
}

void ClaudeTranscript::title()
{
    if (!m_session.isSubagent) {
        fmt::format_to(std::back_inserter(m_text),
            R"({{"type":"ai-title","aiTitle":"Session {}","sessionId":"{}"}})",
            m_session.id.substr(0, 8), m_session.id);
        m_text.append("\n");
    }
}

/// One to four lines, each with the numbers that are known by then.
void ClaudeTranscript::response()
{
    const std::string model(models.at(m_dice.whole(0, m_dice.whole(0, models.size() - 1))));
    const std::string ids =
        fmt::format(R"("model":"{}","id":"msg_01{}","type":"message",)", model, m_dice.hex(22));
    const std::string usage = usageBeforeOutput();
    const auto output = static_cast<std::uint64_t>(m_dice.between(40, 8'000));
    const std::uint64_t lines = m_dice.whole(1, m_dice.whole(1, 4));
    const std::string request = fmt::format(R"("requestId":"req_011C{}",)", m_dice.hex(20));
    for (std::uint64_t line = 1; line <= lines; ++line) {
        beginLine();
        m_text.append(request);
        snapshot(ids, usage, line == lines ? output : line, line == lines);
        endLine("assistant");
    }
}

std::string ClaudeTranscript::usageBeforeOutput()
{
    const std::uint64_t written = m_dice.whole(0, 20'000);
    return fmt::format(
        R"("usage":{{"input_tokens":{},"cache_creation_input_tokens":{},"cache_read_input_tokens":{},)"
        R"("cache_creation":{{"ephemeral_5m_input_tokens":{},"ephemeral_1h_input_tokens":0}},)",
        m_dice.whole(1, 3'000), written, m_dice.whole(0, 180'000), written);
}

void ClaudeTranscript::snapshot(
    std::string_view ids, std::string_view usage, std::uint64_t output, bool isLast)
{
    const auto length = static_cast<std::size_t>(
        m_dice.share() < 0.8 ? m_dice.between(20, 300) : m_dice.between(300, 6'000));
    m_text.append(R"("message":{)").append(ids).append(R"("role":"assistant","content":[)");
    m_text.append(R"({"type":"text","text":")")
        .append(m_prose.text(m_dice, length))
        .append(R"("}],"stop_reason":)")
        .append(isLast ? R"("end_turn")" : "null")
        .append(",")
        .append(usage);
    fmt::format_to(
        std::back_inserter(m_text), R"("output_tokens":{},"service_tier":"standard"}}}},)", output);
}

std::size_t ClaudeTranscript::room() const
{
    constexpr std::size_t least = 400;
    return m_text.size() + least < m_session.bytes ? m_session.bytes - m_text.size() : least;
}
