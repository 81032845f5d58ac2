#pragma once

#include <chrono>
#include <functional>
#include <QList>

/// What is measured: only the processor time of `timed` counts, on the calling thread.
struct Subject {
    std::function<void()> timed;
    std::function<void()> prepare = [] {};
};

[[nodiscard]] double median(QList<double> values);

/// The median time of each subject in milliseconds. They take turns, so that whatever slows the
/// machine for a while slows all of them.
[[nodiscard]] QList<double> medianTimes(int repetitions, const QList<Subject> &subjects);
