#pragma once

#include <chrono>
#include <functional>
#include <QCoreApplication>
#include <QTimer>

/// Calls back after a while, on the main thread and not after the event loop's end. Whoever is
/// called back keeps a ticket that tells whether it is still wanted.
using Sleeper = std::function<void(std::chrono::milliseconds, std::function<void()>)>;

[[nodiscard]] inline Sleeper realSleeper()
{
    return [](std::chrono::milliseconds time, const std::function<void()> &then) {
        QTimer::singleShot(time, QCoreApplication::instance(), then);
    };
}
