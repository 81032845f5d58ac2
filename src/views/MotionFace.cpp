#include "views/MotionFace.h"

#include "views/theme/Motion.h"
#include <algorithm>
#include <cmath>
#include <QEasingCurve>

namespace {

int milliseconds(double seconds)
{
    return static_cast<int>(std::lround(seconds * 1000));
}

int milliseconds(const std::optional<Motion::Ease> &ease)
{
    return ease ? milliseconds(ease->duration) : 0;
}

} // namespace

MotionFace::MotionFace(QObject *parent)
    : QObject(parent)
{
    Motion::onReducedChanged(this, [this] { Q_EMIT reducedChanged(); });
}

MotionFace::~MotionFace()
{
    Motion::stopListening(this);
}

bool MotionFace::reduced()
{
    return Motion::reduced();
}

int MotionFace::hover()
{
    return milliseconds(Motion::hover());
}

int MotionFace::press()
{
    return milliseconds(Motion::press());
}

int MotionFace::tab()
{
    return milliseconds(Motion::tab());
}

int MotionFace::expand()
{
    return milliseconds(Motion::expand());
}

int MotionFace::number()
{
    return milliseconds(Motion::number());
}

int MotionFace::fill()
{
    return milliseconds(Motion::fill());
}

int MotionFace::tip()
{
    return milliseconds(Motion::tip());
}

int MotionFace::grow()
{
    return milliseconds(Motion::grow(0));
}

int MotionFace::growDelay(int i)
{
    const std::optional<Motion::Ease> ease = Motion::grow(i);
    return ease ? milliseconds(ease->delay) : 0;
}

double MotionFace::growth(int i, double milliseconds)
{
    if (grow() == 0) {
        return 1;
    }
    const double progress = (milliseconds - growDelay(i)) / grow();
    return QEasingCurve(QEasingCurve::OutCubic).valueForProgress(std::clamp(progress, 0.0, 1.0));
}

int MotionFace::transition()
{
    return milliseconds(Motion::settleTime);
}

double MotionFace::pressScale()
{
    return Motion::pressScale;
}

double MotionFace::unfoldShift()
{
    return Motion::unfoldShift;
}

double MotionFace::popShift()
{
    return Motion::popShift;
}
