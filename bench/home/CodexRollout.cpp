#include "home/CodexRollout.h"

#include "home/Lengths.h"

#include <fmt/format.h>

namespace {

constexpr std::size_t instructions = 14'000;
constexpr double shortResults = 0.3;

/// In the order of the format's fields.
std::string usageOf(const std::array<std::uint64_t, 6> &counts)
{
    return fmt::format(
        R"({{"input_tokens":{},"cached_input_tokens":{},"cache_write_input_tokens":{},)"
        R"("output_tokens":{},"reasoning_output_tokens":{},"total_tokens":{}}})",
        counts[0], counts[1], counts[2], counts[3], counts[4], counts[5]);
}

} // namespace

CodexRollout::CodexRollout(const Prose &prose, Dice &dice, const Session &session)
    : m_prose(prose)
    , m_dice(dice)
    , m_session(session)
    , m_now(session.start)
{
}

std::string CodexRollout::write()
{
    m_text.reserve(m_session.bytes + m_session.bytes / 4);
    meta();
    do {
        turn();
        message("user", "input_text", static_cast<std::size_t>(m_dice.between(20, 900)));
        for (std::uint64_t responses = m_dice.whole(1, 8); responses > 0; --responses) {
            toolCall();
            response();
        }
        message("assistant", "output_text", static_cast<std::size_t>(m_dice.between(80, 3'000)));
    } while (m_text.size() < m_session.bytes);
    return std::move(m_text);
}

void CodexRollout::beginLine(std::string_view type)
{
    m_now += std::chrono::milliseconds(m_dice.whole(5, 4'000));
    fmt::format_to(std::back_inserter(m_text), R"({{"timestamp":"{}","type":"{}","payload":{{)",
        stamp(m_now), type);
}

void CodexRollout::meta()
{
    beginLine("session_meta");
    fmt::format_to(std::back_inserter(m_text),
        R"("id":"{}","timestamp":"{}","cwd":"{}","originator":"codex-tui","cli_version":"0.159.0",)"
        R"("source":"cli","model_provider":"openai","base_instructions":{{"text":")",
        m_session.id, stamp(m_now), m_session.folder);
    m_text.append(m_prose.text(m_dice, std::min(instructions, m_session.bytes / 4)))
        .append("\"}}}\n");
}

void CodexRollout::turn()
{
    m_turn = m_dice.uuid();
    beginLine("turn_context");
    fmt::format_to(std::back_inserter(m_text),
        R"("turn_id":"{}","cwd":"{}","model":"gpt-5.5","effort":"high",)"
        R"("approval_policy":"on-request","sandbox_policy":{{"type":"workspace-write"}}}}}})",
        m_turn, m_session.folder);
    m_text.append("\n");
}

void CodexRollout::message(std::string_view role, std::string_view part, std::size_t length)
{
    beginLine("response_item");
    fmt::format_to(std::back_inserter(m_text),
        R"("type":"message","role":"{}","content":[{{"type":"{}","text":")", role, part);
    m_text.append(m_prose.text(m_dice, length)).append("\"}]}}\n");
}

void CodexRollout::toolCall()
{
    const std::string call = m_dice.hex(24);
    beginLine("response_item");
    m_text.append(R"("type":"reasoning","summary":[],"encrypted_content":")")
        .append(m_prose.encoded(m_dice, static_cast<std::size_t>(m_dice.between(100, 1'500))))
        .append("\"}}\n");
    beginLine("response_item");
    fmt::format_to(std::back_inserter(m_text),
        R"("type":"function_call","name":"shell","call_id":"call_{}","arguments":")", call);
    m_text.append(m_prose.text(m_dice, 60)).append("\"}}\n");
    beginLine("response_item");
    const std::size_t room =
        m_session.bytes > m_text.size() ? m_session.bytes - m_text.size() : instructions / 100;
    fmt::format_to(std::back_inserter(m_text),
        R"("type":"function_call_output","call_id":"call_{}","output":")", call);
    m_text.append(m_prose.text(m_dice, lengthOfInput(m_dice, shortResults, room))).append("\"}}\n");
}

void CodexRollout::response()
{
    const std::uint64_t cached = m_dice.whole(0, 90'000);
    const std::uint64_t input = cached + m_dice.whole(100, 9'000);
    const auto output = static_cast<std::uint64_t>(m_dice.between(40, 4'000));
    const std::array<std::uint64_t, 6> counts {
        input, cached, 0, output, output / 3, input + output};
    for (std::size_t i = 0; i < counts.size(); ++i) {
        m_total.at(i) += counts.at(i);
    }
    const std::string usage = usageOf(counts);
    record(usage);
    count(usage);
    if (m_dice.share() < 0.4) {
        count(usage);
    }
}

void CodexRollout::record(std::string_view usage)
{
    beginLine("token_usage_record");
    fmt::format_to(std::back_inserter(m_text),
        R"("thread_id":"{0}","session_id":"{0}","turn_id":"{1}","response_id":"resp_{2}",)"
        R"("usage":{3},"thread_token_usage":{4}}}}})",
        m_session.id, m_turn, m_dice.hex(24), usage, usageOf(m_total));
    m_text.append("\n");
}

void CodexRollout::count(std::string_view usage)
{
    beginLine("event_msg");
    fmt::format_to(std::back_inserter(m_text),
        R"("type":"token_count","info":{{"total_token_usage":{},"last_token_usage":{},)"
        R"("model_context_window":258400}},"rate_limits":{{"limit_id":"codex","primary":)"
        R"({{"used_percent":18.0,"window_minutes":300,"resets_at":1782864000}},"secondary":)"
        R"({{"used_percent":55.0,"window_minutes":10080,"resets_at":1783209600}},"plan_type":"plus"}}}}}})",
        usageOf(m_total), usage);
    m_text.append("\n");
}
