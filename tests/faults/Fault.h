#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

/// Kinds of calls to the system that can be made to fail.
enum class Call { Open, Read, Write, Sync, Rename, Truncate, Remove, MakeFolder, Start, Pipe };

/// What is to become of one call.
enum class Fate { Goes, Fails, TakesHalf };

/// The one fault that a program and those that it starts are to meet, told by the environment:
///
/// - FAULT_CALL: which kind of call, as `nameOf` spells it
/// - FAULT_AT: which of them, from 1 on; 0 counts only
/// - FAULT_ERROR: the number that `errno` gets
/// - FAULT_WAY: `once`; `half`, where a write takes half of its bytes and the next one fails;
///   `lasting`, where all that follow fail as well
/// - FAULT_BELOW: how the path of a file must begin for its calls to count
/// - FAULT_PROGRAM: the short name of the program whose calls count; all when it is not set
/// - FAULT_RECORD: a file of at least eight bytes, shared by all these programs, that holds two
///   numbers of four bytes: how many calls counted, and how many of them failed
///
/// Without FAULT_RECORD nothing fails.
class Fault final {
public:
    static Fault &instance();

    /// What `errno` becomes where a call fails.
    [[nodiscard]] int error() const { return m_error; }

    /// What becomes of a call on a path, from the folder of `directory` where it is a relative one.
    [[nodiscard]] Fate fate(Call call, int directory, const char *path);
    /// The same with a path that is as good as the first.
    [[nodiscard]] Fate fate(Call call, const char *path, const char *other);
    /// What becomes of a call on an open file.
    [[nodiscard]] Fate fate(Call call, int descriptor);
    /// What becomes of a call that is about no file.
    [[nodiscard]] Fate fate(Call call);

private:
    struct Record {
        unsigned counted;
        unsigned failed;
    };

    Fault();
    [[nodiscard]] bool concerns(Call call) const { return m_record != nullptr && m_call == call; }
    [[nodiscard]] bool isBelow(std::string_view path) const { return path.starts_with(m_below); }
    [[nodiscard]] Fate next();

    std::optional<Call> m_call;
    unsigned m_at = 0;
    int m_error = 0;
    std::string m_way;
    std::string m_below;
    Record *m_record = nullptr;
};
