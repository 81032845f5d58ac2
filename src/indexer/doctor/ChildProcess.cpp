#include "indexer/doctor/ChildProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace indexer {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// How a child is started: nothing to read, standard output into a pipe, everything else dropped.
class Preparation final {
public:
    explicit Preparation(int output)
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        // What this program ignores is not for others to ignore.
        sigset_t all;
        sigemptyset(&all);
        sigaddset(&all, SIGPIPE);
        sigaddset(&all, SIGXFSZ);
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF);
    }
    ~Preparation()
    {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }
    Preparation(const Preparation &) = delete;
    Preparation &operator=(const Preparation &) = delete;

    /// The child's number, or nothing.
    [[nodiscard]] std::optional<pid_t> start(
        const fs::path &program, const std::vector<std::string> &arguments)
    {
        std::vector<std::string> words {program.native()};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char *> pointers;
        pointers.reserve(words.size() + 1);
        for (std::string &word : words) {
            pointers.push_back(word.data());
        }
        pointers.push_back(nullptr);
        pid_t child = 0;
        return ::posix_spawn(
                   &child, program.c_str(), &m_actions, &m_attributes, pointers.data(), environ)
                == 0
            ? std::optional(child)
            : std::nullopt;
    }

private:
    posix_spawn_file_actions_t m_actions {};
    posix_spawnattr_t m_attributes {};
};

int millisecondsUntil(Clock::time_point deadline)
{
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left, 0));
}

/// Reads until the other side is closed, the time is over, or it is more than anybody wants.
std::string readUntil(int descriptor, Clock::time_point deadline)
{
    constexpr std::size_t most = std::size_t {64} << 10U;
    std::string text;
    std::array<char, 4096> part {};
    pollfd wait {.fd = descriptor, .events = POLLIN, .revents = 0};
    while (text.size() < most && ::poll(&wait, 1, millisecondsUntil(deadline)) > 0) {
        const ssize_t count = ::read(descriptor, part.data(), part.size());
        if (count <= 0) {
            break;
        }
        text.append(part.data(), static_cast<std::size_t>(count));
    }
    return text;
}

/// Whether a child ended well in time. It has ended in any case.
bool hasEndedWell(pid_t child, Clock::time_point deadline)
{
    constexpr auto pause = std::chrono::milliseconds {2};
    int status = 0;
    pid_t ended = 0;
    while ((ended = ::waitpid(child, &status, WNOHANG)) == 0 && Clock::now() < deadline) {
        std::this_thread::sleep_for(pause);
    }
    if (ended == 0) {
        ::kill(child, SIGKILL);
        ::waitpid(child, &status, 0);
        return false;
    }
    return ended == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

std::optional<std::string> programOutput(const fs::path &program,
    const std::vector<std::string> &arguments, std::chrono::milliseconds patience)
{
    std::array<int, 2> ends {};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    const auto deadline = Clock::now() + patience;
    const auto child = Preparation(ends[1]).start(program, arguments);
    ::close(ends[1]);
    const std::string text = child ? readUntil(ends[0], deadline) : std::string();
    ::close(ends[0]);
    return child && hasEndedWell(*child, deadline) ? std::optional(text) : std::nullopt;
}

std::optional<fs::path> findProgram(std::string_view name, std::string_view path)
{
    while (!path.empty()) {
        const std::string_view folder = path.substr(0, path.find(':'));
        path.remove_prefix(std::min(path.size(), folder.size() + 1));
        const fs::path program = fs::path(folder.empty() ? "." : folder) / name;
        std::error_code ignored;
        if (fs::is_regular_file(program, ignored) && ::access(program.c_str(), X_OK) == 0) {
            return program;
        }
    }
    return std::nullopt;
}

} // namespace indexer
