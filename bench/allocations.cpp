#include "allocations.h"

#include <cstddef>

// The program's own versions take the place of the C library's, in Qt as well; they count and leave
// the rest to it.

namespace {

thread_local qint64 counted = 0;

} // namespace

extern "C" {

void *__libc_malloc(std::size_t size);                    // NOLINT(bugprone-reserved-identifier)
void *__libc_calloc(std::size_t count, std::size_t size); // NOLINT(bugprone-reserved-identifier)
void *__libc_realloc(void *block, std::size_t size);      // NOLINT(bugprone-reserved-identifier)

void *malloc(std::size_t size) noexcept
{
    ++counted;
    return __libc_malloc(size);
}

void *calloc(std::size_t count, std::size_t size) noexcept
{
    ++counted;
    return __libc_calloc(count, size);
}

void *realloc(void *block, std::size_t size) noexcept
{
    ++counted;
    return __libc_realloc(block, size);
}
}

qint64 allocations()
{
    return counted;
}
