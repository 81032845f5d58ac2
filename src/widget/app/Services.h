#pragma once

#include "widget/app/AccountPoller.h"
#include "widget/app/DeferredWork.h"
#include "widget/app/UpdateChecker.h"
#include "widget/platform/LoginItem.h"
#include "widget/platform/ReducedMotion.h"

/// What the shell needs from outside the process; a test gives it others.
struct Services {
    const Clock &clock;
    AccountPoller::Fetch fetchUsage;
    UpdateChecker::Fetch fetchUpdate;
    Sleeper sleeper;
    LoginItem loginItem;
    ReducedMotion &systemMotion;

    /// The computer's own clock, the account of Claude Code, the product's server, this program.
    [[nodiscard]] static Services real(const Clock &clock, ReducedMotion &systemMotion);
};
