#pragma once

#include "home/Prose.h"
#include "home/Session.h"

#include <string>

/// Writes the lines of one session as Claude Code does.
class ClaudeTranscript final {
public:
    ClaudeTranscript(const Prose &prose, Dice &dice, const Session &session);

    /// The whole file.
    [[nodiscard]] std::string write();

private:
    void beginLine();
    void endLine(std::string_view type);
    void prompt();
    void toolResult();
    void turnDuration();
    void title();
    void response();
    void snapshot(std::string_view ids, std::string_view usage, std::uint64_t output, bool isLast);
    [[nodiscard]] std::string usageBeforeOutput();
    [[nodiscard]] std::size_t room() const;

    const Prose &m_prose;
    Dice &m_dice;
    const Session &m_session;
    std::string m_common; ///< fields that every line of the session has
    std::string m_text;
    std::string m_last; ///< id of the line before
    std::chrono::sys_time<std::chrono::milliseconds> m_now;
};
