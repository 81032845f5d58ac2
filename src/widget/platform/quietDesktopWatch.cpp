// For systems without X.

#include "widget/platform/DesktopWatch.h"
#include "widget/platform/sendRequests.h"

class DesktopWatch::Session { };

DesktopWatch::DesktopWatch(QObject *parent)
    : QObject(parent)
{
}

DesktopWatch::~DesktopWatch() = default;

bool DesktopWatch::composited() const
{
    return true;
}

bool DesktopWatch::hasTray() const
{
    return true;
}

bool DesktopWatch::isCovered(quint32 /*window*/) const
{
    return false;
}

QRect DesktopWatch::cleared(const QRect &monitor) const
{
    return monitor;
}

void DesktopWatch::watchPresses(bool /*on*/) { }

void sendRequests() { }

#include "moc_DesktopWatch.cpp"
