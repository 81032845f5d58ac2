#include "Fault.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr std::array<std::string_view, 10> names {
    "open", "read", "write", "sync", "rename", "truncate", "remove", "mkdir", "start", "pipe"};

std::string variable(const char *name)
{
    const char *text = std::getenv(name);
    return text == nullptr ? "" : text;
}

std::string pathOf(const std::string &link)
{
    std::array<char, PATH_MAX> path {};
    const ssize_t size = ::readlink(link.c_str(), path.data(), path.size());
    return {path.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

std::string pathOf(int descriptor)
{
    return pathOf("/proc/self/fd/" + std::to_string(descriptor));
}

std::string wholePath(int directory, const char *path)
{
    if (path == nullptr || *path == '/') {
        return path == nullptr ? "" : path;
    }
    return (directory == AT_FDCWD ? pathOf("/proc/self/cwd") : pathOf(directory)) + '/' + path;
}

/// Looking at a call must not change what it says about itself.
class KeptError final {
public:
    KeptError() = default;
    ~KeptError() { errno = m_error; }
    KeptError(const KeptError &) = delete;
    KeptError &operator=(const KeptError &) = delete;

private:
    const int m_error = errno;
};

} // namespace

Fault &Fault::instance()
{
    // Never destroyed: the calls at a program's end count like any other.
    static auto *const fault = new Fault;
    return *fault;
}

Fault::Fault()
    : m_at(static_cast<unsigned>(std::atoi(variable("FAULT_AT").c_str())))
    , m_error(std::atoi(variable("FAULT_ERROR").c_str()))
    , m_way(variable("FAULT_WAY"))
    , m_below(variable("FAULT_BELOW"))
{
    const auto *const name = std::ranges::find(names, variable("FAULT_CALL"));
    const std::string program = variable("FAULT_PROGRAM");
    const std::string record = variable("FAULT_RECORD");
    if (record.empty() || name == names.end()
        || (!program.empty() && program != ::program_invocation_short_name)) {
        return;
    }
    m_call = static_cast<Call>(name - names.begin());
    // Not our own open(), which asks for this very object.
    using Open = int (*)(const char *, int, ...);
    const auto openFile = reinterpret_cast<Open>(::dlsym(RTLD_NEXT, "open"));
    const int descriptor = openFile(record.c_str(), O_RDWR | O_CLOEXEC);
    void *const memory =
        ::mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    ::close(descriptor);
    if (memory == MAP_FAILED) {
        std::abort(); // a test without its fault would pass
    }
    m_record = static_cast<Record *>(memory);
}

Fate Fault::fate(Call call, int directory, const char *path)
{
    const KeptError kept;
    return concerns(call) && isBelow(wholePath(directory, path)) ? next() : Fate::Goes;
}

Fate Fault::fate(Call call, const char *path, const char *other)
{
    const KeptError kept;
    return concerns(call)
            && (isBelow(wholePath(AT_FDCWD, path)) || isBelow(wholePath(AT_FDCWD, other)))
        ? next()
        : Fate::Goes;
}

Fate Fault::fate(Call call, int descriptor)
{
    const KeptError kept;
    return concerns(call) && isBelow(pathOf(descriptor)) ? next() : Fate::Goes;
}

Fate Fault::fate(Call call)
{
    return concerns(call) ? next() : Fate::Goes;
}

Fate Fault::next()
{
    const unsigned number = std::atomic_ref(m_record->counted).fetch_add(1) + 1;
    const bool isHalf = m_way == "half" && number == m_at;
    const bool fails = m_at != 0
        && (number == m_at || (m_way == "half" && number == m_at + 1)
            || (m_way == "lasting" && number > m_at));
    if (!fails) {
        return Fate::Goes;
    }
    std::atomic_ref(m_record->failed).fetch_add(1);
    return isHalf ? Fate::TakesHalf : Fate::Fails;
}
