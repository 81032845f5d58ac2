// Stands in front of the C library's functions, by LD_PRELOAD, and lets those fail that a Fault
// says.
//
// What a library calls within itself does not come by here. So the functions that are caught are
// the ones that our programs, SQLite, Qt, Node and the shell's tools are linked to.

#include "Fault.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <sched.h>
#include <stdio_ext.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// The function that would have been called without us.
template <typename Function> Function following(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

Fault &fault()
{
    return Fault::instance();
}

/// Calls a function that tells of a failure by -1, unless it is to fail.
template <typename Function, typename... Arguments>
auto call(Fate fate, Function function, Arguments... arguments) -> decltype(function(arguments...))
{
    if (fate == Fate::Goes) {
        return function(arguments...);
    }
    errno = fault().error();
    return -1;
}

bool hasMode(int flags)
{
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

} // namespace

#define FOLLOWING(name) static const auto next = following<decltype(&::name)>(#name)

#define MODE(flags)                                                                                \
    mode_t mode = 0;                                                                               \
    if (hasMode(flags)) {                                                                          \
        va_list rest;                                                                              \
        va_start(rest, flags);                                                                     \
        mode = va_arg(rest, mode_t);                                                               \
        va_end(rest);                                                                              \
    }

extern "C" {

int open(const char *path, int flags, ...)
{
    FOLLOWING(open);
    MODE(flags)
    return call(fault().fate(Call::Open, AT_FDCWD, path), next, path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    FOLLOWING(open64);
    MODE(flags)
    return call(fault().fate(Call::Open, AT_FDCWD, path), next, path, flags, mode);
}

int openat(int directory, const char *path, int flags, ...)
{
    FOLLOWING(openat);
    MODE(flags)
    return call(fault().fate(Call::Open, directory, path), next, directory, path, flags, mode);
}

int mkostemp(char *path, int flags)
{
    FOLLOWING(mkostemp);
    return call(fault().fate(Call::Open, AT_FDCWD, path), next, path, flags);
}

ssize_t read(int file, void *bytes, size_t size)
{
    FOLLOWING(read);
    return call(fault().fate(Call::Read, file), next, file, bytes, size);
}

ssize_t pread64(int file, void *bytes, size_t size, off64_t place)
{
    FOLLOWING(pread64);
    return call(fault().fate(Call::Read, file), next, file, bytes, size, place);
}

ssize_t write(int file, const void *bytes, size_t size)
{
    FOLLOWING(write);
    const Fate fate = fault().fate(Call::Write, file);
    return fate == Fate::TakesHalf && size > 1 ? next(file, bytes, size / 2)
                                               : call(fate, next, file, bytes, size);
}

ssize_t pwrite64(int file, const void *bytes, size_t size, off64_t place)
{
    FOLLOWING(pwrite64);
    const Fate fate = fault().fate(Call::Write, file);
    return fate == Fate::TakesHalf && size > 1 ? next(file, bytes, size / 2, place)
                                               : call(fate, next, file, bytes, size, place);
}

// NOLINTNEXTLINE(readability-function-size): its parameters are the C library's
ssize_t copy_file_range(
    int from, off64_t *fromPlace, int file, off64_t *place, size_t size, unsigned flags)
{
    FOLLOWING(copy_file_range);
    return call(fault().fate(Call::Write, file), next, from, fromPlace, file, place, size, flags);
}

/// The shell writes through a stream. What is held back there goes through fflush() alone.
int setvbuf(FILE *stream, char *buffer, int mode, size_t size) noexcept
{
    FOLLOWING(setvbuf);
    const bool isHeld = mode == _IOLBF && stream == stdout;
    return next(stream, buffer, isHeld ? _IOFBF : mode, size);
}

int fflush(FILE *stream)
{
    FOLLOWING(fflush);
    const size_t pending = stream == nullptr ? 0 : __fpending(stream);
    const Fate fate = pending == 0 ? Fate::Goes : fault().fate(Call::Write, fileno(stream));
    if (fate == Fate::Goes) {
        return next(stream);
    }
    if (fate == Fate::TakesHalf) {
        static_cast<void>(
            !::syscall(SYS_write, fileno(stream), stream->_IO_write_base, pending / 2));
    }
    __fpurge(stream);
    stream->_flags |= _IO_ERR_SEEN;
    errno = fault().error();
    return EOF;
}

int fsync(int file)
{
    FOLLOWING(fsync);
    return call(fault().fate(Call::Sync, file), next, file);
}

int fdatasync(int file)
{
    FOLLOWING(fdatasync);
    return call(fault().fate(Call::Sync, file), next, file);
}

int rename(const char *from, const char *to) noexcept
{
    FOLLOWING(rename);
    return call(fault().fate(Call::Rename, from, to), next, from, to);
}

int renameat(int fromFolder, const char *from, int toFolder, const char *to) noexcept
{
    FOLLOWING(renameat);
    return call(fault().fate(Call::Rename, from, to), next, fromFolder, from, toFolder, to);
}

int renameat2(
    int fromFolder, const char *from, int toFolder, const char *to, unsigned flags) noexcept
{
    FOLLOWING(renameat2);
    return call(fault().fate(Call::Rename, from, to), next, fromFolder, from, toFolder, to, flags);
}

/// Qt gives a file that had no name one.
int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    FOLLOWING(linkat);
    return call(fault().fate(Call::Rename, from, to), next, fromFolder, from, toFolder, to, flags);
}

int ftruncate64(int file, off64_t size) noexcept
{
    FOLLOWING(ftruncate64);
    return call(fault().fate(Call::Truncate, file), next, file, size);
}

int unlink(const char *path) noexcept
{
    FOLLOWING(unlink);
    return call(fault().fate(Call::Remove, AT_FDCWD, path), next, path);
}

int mkdir(const char *path, mode_t mode) noexcept
{
    FOLLOWING(mkdir);
    return call(fault().fate(Call::MakeFolder, AT_FDCWD, path), next, path, mode);
}

pid_t fork() noexcept
{
    FOLLOWING(fork);
    return call(fault().fate(Call::Start), next);
}

/// Qt's way to start programs.
int clone(int (*run)(void *), void *stack, int flags, void *argument, ...) noexcept
{
    FOLLOWING(clone);
    va_list rest;
    va_start(rest, argument);
    auto *const parentPlace = va_arg(rest, pid_t *);
    void *const locals = va_arg(rest, void *);
    auto *const childPlace = va_arg(rest, pid_t *);
    va_end(rest);
    return call(fault().fate(Call::Start), next, run, stack, flags, argument, parentPlace, locals,
        childPlace);
}

/// Not pipe(), by which the sanitizers look whether memory can be read.
int pipe2(int ends[2], int flags) noexcept
{
    FOLLOWING(pipe2);
    return call(fault().fate(Call::Pipe), next, ends, flags);
}

int socketpair(int domain, int type, int protocol, int ends[2]) noexcept
{
    FOLLOWING(socketpair);
    return call(fault().fate(Call::Pipe), next, domain, type, protocol, ends);
}

} // extern "C"
