#include "Frames.h"
#include "Measure.h"
#include "pictures/Canned.h"
#include "pictures/Stage.h"
#include "Row.h"
#include "widget/views/theme/Motion.h"

namespace {

constexpr int monthOfDays = 30;
constexpr int tenYears = 3653;
// A page shows 14 of the month's days, so that this many steps lead to its other end.
constexpr int fewestSteps = monthOfDays - 14;

/// A panel whose chart is scrolled to and fro.
class Scroller final {
public:
    explicit Scroller(int days)
    {
        m_stage.model().loadStats(Canned::statistics({.days = days}));
        m_stage.model().setExpanded(true);
        m_stage.show();
        Q_UNUSED(m_stage.settle());
        // The month is scrolled over all of it, the years in their middle.
        m_stage.model().move((days - 14) / 2 - fewestSteps / 2);
        drawFrame(m_stage.window());
    }

    void step()
    {
        m_stage.model().move(m_left > 0 ? 1 : -1);
        m_left = m_left == 1 - fewestSteps ? fewestSteps : m_left - 1;
        drawFrame(m_stage.window());
    }

private:
    Stage m_stage;
    int m_left = fewestSteps; ///< steps to older bars; as many to newer ones when it is negative
};

} // namespace

QList<Row> scrollRows()
{
    Motion::setReduced(true);
    Scroller month(monthOfDays);
    Scroller years(tenYears);
    const QList<double> times =
        medianTimes(400, {{[&month] { month.step(); }}, {[&years] { years.step(); }}});
    Motion::setReduced(false);
    return {{QStringLiteral("scroll step: ten years / one month"), times.at(1) / times.at(0), 1.2,
        QStringLiteral("x"),
        QStringLiteral("%1 ms / %2 ms").arg(times.at(1), 0, 'f', 2).arg(times.at(0), 0, 'f', 2)}};
}
