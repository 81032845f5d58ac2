#include "Measure.h"

#include <algorithm>
#include <ctime>

namespace {

/// Milliseconds that this thread has been running. Other programs' share of the machine is no part
/// of it, and all drawing happens on the one thread.
double threadTime()
{
    timespec time {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace

double median(QList<double> values)
{
    const auto middle = values.begin() + values.size() / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

QList<double> medianTimes(int repetitions, const QList<Subject> &subjects)
{
    QList<QList<double>> times(subjects.size());
    for (int round = 0; round < repetitions; ++round) {
        for (qsizetype i = 0; i < subjects.size(); ++i) {
            subjects.at(i).prepare();
            const double before = threadTime();
            subjects.at(i).timed();
            times[i].append(threadTime() - before);
        }
    }
    QList<double> medians;
    std::ranges::transform(times, std::back_inserter(medians), median);
    return medians;
}
