#pragma once

#include "home/Prose.h"
#include "home/Session.h"

#include <array>
#include <string>

/// Writes the lines of one thread as Codex does.
class CodexRollout final {
public:
    CodexRollout(const Prose &prose, Dice &dice, const Session &session);

    /// The whole file.
    [[nodiscard]] std::string write();

private:
    void beginLine(std::string_view type);
    void meta();
    void turn();
    void message(std::string_view role, std::string_view part, std::size_t length);
    void toolCall();
    void response();
    void record(std::string_view usage);
    void count(std::string_view usage);

    const Prose &m_prose;
    Dice &m_dice;
    const Session &m_session;
    std::string m_text;
    std::string m_turn;
    std::array<std::uint64_t, 6> m_total {};
    std::chrono::sys_time<std::chrono::milliseconds> m_now;
};
