#pragma once

#include <QtGlobal>

/// How often this thread has asked for memory, by whatever way.
[[nodiscard]] qint64 allocations();
