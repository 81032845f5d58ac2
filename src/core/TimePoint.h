#pragma once

#include <chrono>

/// A moment, in milliseconds since 1970 (UTC).
using TimePoint = std::chrono::sys_time<std::chrono::milliseconds>;
