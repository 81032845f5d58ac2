#include "Frames.h"
#include "Measure.h"
#include "pictures/Canned.h"
#include "pictures/Stage.h"
#include "Row.h"

namespace {

constexpr double frameOf60Hz = 16.7;
constexpr int steps = 17; ///< of a glide of 280 ms

/// A wide panel that grows and shrinks on its stage, over and over.
class Glider final {
public:
    Glider()
    {
        m_stage.model().loadStats(Canned::statistics({.days = 3653, .sessions = 5000}));
        m_stage.model().setLimits(Canned::limits());
        m_stage.model().setExpanded(true);
        m_stage.show();
        Q_UNUSED(m_stage.settle());
        m_large = m_stage.window().frame();
        m_stage.window().openStage(m_large);
    }

    void step()
    {
        const double share = double(std::abs(m_at - steps)) / steps;
        m_at = (m_at + 1) % (2 * steps);
        const QSizeF least = m_large.size() / 2;
        const QSizeF size = least + (m_large.size() - least) * share;
        m_stage.window().setFrame(
            {m_large.bottomRight() - QPointF(size.width(), size.height()), size});
        drawFrame(m_stage.window());
    }

private:
    Stage m_stage;
    QRectF m_large;
    int m_at = 0;
};

} // namespace

QList<Row> glideRows()
{
    Glider glider;
    const QList<double> times = medianTimes(20 * steps, {{[&glider] { glider.step(); }}});
    return {{QStringLiteral("step of a glide, ten years"), times.at(0), frameOf60Hz,
        QStringLiteral("ms"), {}}};
}
