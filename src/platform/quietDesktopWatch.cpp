// For systems without X.

#include "platform/DesktopWatch.h"

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

void DesktopWatch::watchPresses(bool /*on*/) { }

#include "moc_DesktopWatch.cpp"
