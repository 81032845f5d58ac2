#include "widget/views/theme/Metrics.h"

#include <algorithm>
#include <QFontInfo>
#include <QGuiApplication>

double Metrics::fontScale()
{
    // What desktops have is about this size; a larger one is a wish for larger text, as far as the
    // panel's width allows.
    constexpr double ordinary = 14;
    constexpr double most = 1.25;
    return std::clamp(QFontInfo(QGuiApplication::font()).pixelSize() / ordinary, 1.0, most);
}

#include "moc_Metrics.cpp"
