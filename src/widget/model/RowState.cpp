#include "widget/model/RowState.h"

#include "widget/model/wholeNumber.h"
#include "widget/text/Strings.h"
#include <algorithm>
#include <chrono>
#include <cmath>

using namespace std::chrono_literals;

namespace {

// Below these the average rate says too little about what is to come.
constexpr double leastPercent = 5;
constexpr double leastPace = 0.03;

/// When the window is used up if use goes on at the average rate so far.
Seconds projected(double percent, Seconds length, double pace)
{
    return (100 - percent) * length * pace / percent;
}

void warn(RowState &row, double percent, Seconds length, Seconds left, const Strings &strings)
{
    if (percent >= 100) {
        row.runout = strings.t(QStringLiteral("exhausted"));
        row.runoutColor = Palette::red();
    } else if (percent >= leastPercent && *row.pace >= leastPace) {
        const Seconds until = projected(percent, length, *row.pace);
        if (until < left) {
            row.runout = strings.t(QStringLiteral("runout"), {strings.span(until)});
        }
    }
}

/// The window began anew since the reading was taken, and nothing is known of the new one.
RowState resetRow(const Strings &strings)
{
    RowState row;
    row.percentText = QStringLiteral("0%");
    row.note = strings.t(QStringLiteral("windowReset"));
    row.value = 0;
    return row;
}

} // namespace

RowState rowState(
    const std::optional<Reading> &reading, Seconds length, TimePoint now, const Strings &strings)
{
    RowState row;
    if (!reading) {
        row.note = strings.t(QStringLiteral("noData"));
        return row;
    }
    if (reading->resetsAt && *reading->resetsAt <= now) {
        return resetRow(strings);
    }
    const double percent = reading->percent;
    Q_ASSERT(std::isfinite(percent));
    row.tone = Palette::toneHex(percent);
    row.percentColor = *row.tone;
    row.percentText = wholeNumber(percent) % u'%'; // cut off: 59.9 shows 59%
    row.fill = percent < 0 ? 0 : std::min(percent, 100.0) / 100;
    row.value = percent;
    if (!reading->resetsAt) {
        return row;
    }
    const Seconds left = elapsed(now, *reading->resetsAt);
    row.pace = std::clamp(1 - left / length, 0.0, 1.0);
    row.note = strings.t(
        QStringLiteral("resetIn"), {strings.when(*reading->resetsAt, now), strings.span(left)});
    warn(row, percent, length, left, strings);
    return row;
}
