#include "widget/platform/keepPrivate.h"

#include <algorithm>
#include <optional>
#include <QtGlobal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

/// On Linux a limit of 0 still lets the system's collector of dumps have everything; 1 does not.
#ifdef Q_OS_LINUX
constexpr rlim_t noDump = 1;
#else
constexpr rlim_t noDump = 0;
#endif

struct Before {
    mode_t umask;
    std::optional<rlimit> core;
};

std::optional<Before> before;

} // namespace

void keepPrivate()
{
    before = Before {::umask(S_IRWXG | S_IRWXO), {}};
    rlimit core {};
    if (::getrlimit(RLIMIT_CORE, &core) == 0) {
        before->core = core;
        core.rlim_cur = std::min(noDump, core.rlim_max);
        ::setrlimit(RLIMIT_CORE, &core);
    }
}

void undoKeepPrivate()
{
    if (before) {
        ::umask(before->umask);
        if (before->core) {
            ::setrlimit(RLIMIT_CORE, &*before->core);
        }
    }
}
