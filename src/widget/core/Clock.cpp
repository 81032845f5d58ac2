#include "widget/core/Clock.h"

TimePoint SystemClock::now() const
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}
