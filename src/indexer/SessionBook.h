#pragma once

#include "indexer/Moment.h"
#include "indexer/TextPool.h"
#include "indexer/TranscriptLine.h"

#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace indexer {

/// What is known of sessions beyond their usage: titles, ends and folders.
class SessionBook final {
public:
    explicit SessionBook(TextPool &names);

    /// The title of each session that has one, by session.
    [[nodiscard]] std::unordered_map<TextId, std::string> titles() const;
    /// When the session's own last line was written.
    [[nodiscard]] std::optional<TimePoint> end(TextId session) const;
    /// Where the user wrote the session's first line, 0 when no line tells.
    [[nodiscard]] TextId folder(TextId session) const;

    /// Takes up a line of a user or an assistant, or one of the system's, which a summary may end
    /// with.
    void addConversation(const TranscriptLine &line, TimePoint time);
    /// Takes up a line that gives a title; `file` is the path of its transcript.
    void addTitle(const TranscriptLine &line, std::string_view file);

private:
    /// A title and the file it stands in: the session's own file, then the last path, then the
    /// last line decide.
    struct Title {
        bool inOwnFile = false;
        TextId file = 0;
        std::string text;
    };
    struct Prompt {
        TimePoint time {};
        std::string text;
    };
    struct Folder {
        TimePoint time {};
        TextId path = 0;
    };
    /// A line that a summary may belong to.
    struct Leaf {
        std::uint64_t line = 0; // the hash of its id
        TimePoint time {};
    };
    struct Session {
        std::array<Title, 3> titles; // custom title, agent name, title by the assistant
        std::optional<Prompt> prompt;
        std::optional<TimePoint> end;
        Folder folder;
        std::vector<Leaf> leaves; // empty once titled

        [[nodiscard]] const std::string *title() const;
    };

    [[nodiscard]] const Title *summaryOf(const Session &session) const;
    void replace(Title &title, bool inOwnFile, std::string_view file, std::string text);
    void addPrompt(Session &session, const TranscriptLine &line, TimePoint time) const;

    TextPool &m_names;
    std::unordered_map<TextId, Session> m_sessions;
    std::unordered_map<std::uint64_t, Title> m_summaries; // by the hash of the line they end with
};

} // namespace indexer
