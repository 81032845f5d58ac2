#pragma once

#include "usage/claude/TranscriptLine.h"
#include "usage/values/Answer.h"
#include "usage/values/Packed.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace usage {

/// What one transcript tells of a session beyond its usage.
struct SessionFacts {
    /// The earliest of several texts; of those at one time, the first by name.
    struct Earliest {
        std::optional<Standing> standing;
        std::string text;

        void take(Standing other, std::string_view otherText);
    };
    /// A line that a summary may belong to.
    struct Leaf {
        std::uint64_t line = 0; // the hash of its id
        TimePoint time {};
    };

    /// The last one of each kind: by the user, by an agent, by the assistant.
    std::array<std::string, 3> titles;
    Earliest prompt;                 // what the user wrote first
    Earliest folder;                 // where the first answer was given that tells it
    Earliest userFolder;             // and the first line of the user written
    std::optional<TimePoint> end;    // of the session's own lines
    std::optional<TimePoint> latest; // of the answers, copied ones too
    std::vector<Leaf> leaves;        // empty once titled

    [[nodiscard]] bool hasTitle() const;

    /// Takes up what the same file tells further on.
    void append(SessionFacts later);
    /// Drops what only a session without title needs.
    void tidy();
};

/// For the history, sealed to their place.
void pack(PackedWriter &writer, const SessionFacts &facts, std::uint64_t place);
/// Nothing for bytes that were not packed for this place.
[[nodiscard]] std::optional<SessionFacts> unpackSessionFacts(
    std::string_view bytes, std::uint64_t place);

/// A title of an old transcript, behind the path of its file.
using Summary = std::pair<std::string, std::string>;
/// Finds the title that belongs to the line with this hash, which the session ends with.
using Summaries = std::function<std::optional<Summary>(std::uint64_t line)>;

/// A session as it is shown. Texts are empty where nothing tells them.
struct SessionFace {
    std::string title;
    std::string folder; // its whole path
    TimePoint end {};
    std::string prompt = {}; // of Codex's: what the user wrote first, where the title is a name
};

/// Puts together what several transcripts tell of one session, whatever their order.
class SessionMerge final {
public:
    explicit SessionMerge(std::string_view session)
        : m_session(session)
    {
    }

    [[nodiscard]] SessionFace face(const Summaries &summaries) const;

    void add(const SessionFacts &facts, std::string_view file);

private:
    /// A title in the session's own file goes before others, then the last by its file's path.
    struct Title {
        bool inOwnFile = false;
        std::string file;
        std::string text;
    };

    [[nodiscard]] std::string title(const Summaries &summaries) const;
    [[nodiscard]] std::string summary(const Summaries &summaries) const;

    std::string m_session;
    std::array<Title, 3> m_titles;
    SessionFacts m_all; // all but the titles
};

} // namespace usage
