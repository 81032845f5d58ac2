#include "widget/core/useOneHeap.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

void useOneHeap()
{
#ifdef __GLIBC__
    constexpr int largeBlock = 64 * 1024; // bytes; left alone, the limit grows with what is freed
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_THRESHOLD, largeBlock);
#endif
}
