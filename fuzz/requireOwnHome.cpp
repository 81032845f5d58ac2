#include "requireOwnHome.h"

#include <cstdio>
#include <cstdlib>

void requireOwnHome()
{
    if (std::getenv("NSS_WRAPPER_PASSWD") == nullptr) {
        std::fputs("fuzz: this writes into the home directory; run it by ./dev fuzz, or under "
                   "tools/with-home --new\n",
            stderr);
        std::exit(1);
    }
}
