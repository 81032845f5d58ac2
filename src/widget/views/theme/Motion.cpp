#include "widget/views/theme/Motion.h"

#include <algorithm>
#include <QEasingCurve>

void Motion::setReduced(bool reduced)
{
    s_reduced = reduced;
    announceChange();
}

std::optional<Motion::Spring> Motion::island()
{
    return reduced() ? std::nullopt : std::optional(Spring {Time(360), 0.82, Time(0)});
}

double Motion::growth(int i, double milliseconds) const
{
    if (grow() == 0) {
        return 1;
    }
    const double progress = (milliseconds - growDelay(i)) / grow();
    return QEasingCurve(QEasingCurve::OutCubic).valueForProgress(std::clamp(progress, 0.0, 1.0));
}

#include "moc_Motion.cpp"
