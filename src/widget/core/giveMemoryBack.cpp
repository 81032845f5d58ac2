#include "widget/core/giveMemoryBack.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

void giveMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}
