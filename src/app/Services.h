#pragma once

#include "app/AccountPoller.h"
#include "app/DeferredWork.h"
#include "app/UpdateChecker.h"
#include "platform/LoginItem.h"
#include "platform/ReducedMotion.h"

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
