#include "fail.h"

#include <cstdio>
#include <cstdlib>

void fail(const QString &message)
{
    std::fprintf(stderr, "kestrelbay-bench: %s\n", qUtf8Printable(message));
    std::exit(1);
}
