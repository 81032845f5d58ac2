#pragma once

/// The argument that makes the test program save until it is killed.
inline constexpr const char *saveForEver = "--save-for-ever";

[[noreturn]] void saveUntilKilled();
