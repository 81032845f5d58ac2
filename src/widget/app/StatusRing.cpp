#include "widget/app/StatusRing.h"

#include "widget/model/wholeNumber.h"
#include "widget/views/theme/Palette.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <QPainter>
#include <QPainterPath>

namespace {

// The drawing's own units.
constexpr double side = 18;
constexpr double diameter = 13;
constexpr double lineWidth = 2.4;
constexpr QRectF circle {(side - diameter) / 2, (side - diameter) / 2, diameter, diameter};

constexpr double twelveOClock = 90;
constexpr double degreesPerPercent = 3.6;

/// What trays take, also on screens of two or three pixels a point.
constexpr std::array sizes {16, 18, 22, 24, 32, 36, 44, 48, 64};

std::optional<double> known(const std::optional<double> &percent)
{
    return percent && std::isfinite(*percent) ? percent : std::nullopt;
}

QPixmap drawn(int size, double percent)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / side, size / side);
    painter.setPen(QPen(QColor::fromRgbF(0.5F, 0.52F, 0.55F, 0.6F), lineWidth));
    painter.drawEllipse(circle);
    if (percent > 0) {
        QPainterPath arc;
        arc.arcMoveTo(circle, twelveOClock);
        arc.arcTo(circle, twelveOClock, -degreesPerPercent * std::min(percent, 100.0));
        const QColor tone = Palette::toneHex(percent);
        painter.strokePath(arc, QPen(tone, lineWidth, Qt::SolidLine, Qt::RoundCap));
    }
    return pixmap;
}

} // namespace

QString StatusRing::key(const std::optional<double> &percent)
{
    const std::optional<double> reading = known(percent);
    return reading ? wholeNumber(std::round(*reading)) : QStringLiteral("none");
}

QIcon StatusRing::icon(const std::optional<double> &percent)
{
    QIcon made;
    for (const int size : sizes) {
        made.addPixmap(drawn(size, known(percent).value_or(0)));
    }
    return made;
}
