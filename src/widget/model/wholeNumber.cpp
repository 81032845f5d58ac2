#include "widget/model/wholeNumber.h"

#include <algorithm>
#include <cmath>

QString wholeNumber(double value)
{
    constexpr double most = 9.2e18;
    const double number = std::isnan(value) ? 0 : value;
    return QString::number(static_cast<qint64>(std::clamp(number, -most, most)));
}
