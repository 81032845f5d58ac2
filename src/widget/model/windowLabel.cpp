#include "widget/model/windowLabel.h"

#include "formats/Limit.h"
#include "widget/text/Strings.h"
#include <cmath>

using namespace std::chrono_literals;

QString windowLabel(Seconds length, const Strings &strings)
{
    const auto isAbout = [length](Seconds known) { return std::chrono::abs(length - known) < 60s; };
    if (isAbout(Limit::fiveHours)) {
        return strings.t(QStringLiteral("fiveHours"));
    }
    if (isAbout(Limit::week)) {
        return strings.t(QStringLiteral("week"));
    }
    // Not an integer type: a file may name a window of any length.
    const double hours = std::round(length / Seconds(1h)) + 0.0; // no "-0"
    const bool wholeDays = std::fmod(hours, 24) == 0;
    return QString::number(wholeDays ? hours / 24 : hours, 'g', 15)
        % (wholeDays ? QLatin1String("d") : QLatin1String("h"));
}
