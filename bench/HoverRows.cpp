#include "Frames.h"
#include "Measure.h"
#include "pictures/Canned.h"
#include "pictures/Stage.h"
#include "Row.h"
#include "widget/views/HistoryChart.h"
#include "widget/views/theme/Motion.h"
#include <memory>
#include <numeric>
#include <QMetaMethod>
#include <QQuickItem>
#include <QSignalSpy>
#include <QtMath>
#include <vector>

namespace {

constexpr double firstBar = 10;
constexpr double oneBar = 22; // points; the bars of a page of days

/// Counts whatever an object announces.
class Listener final {
public:
    explicit Listener(const QObject &object)
    {
        const QMetaObject *type = object.metaObject();
        for (int i = QObject::staticMetaObject.methodCount(); i < type->methodCount(); ++i) {
            if (type->method(i).methodType() == QMetaMethod::Signal) {
                m_spies.push_back(std::make_unique<QSignalSpy>(&object, type->method(i)));
            }
        }
    }

    [[nodiscard]] qsizetype heard() const
    {
        return std::accumulate(m_spies.begin(), m_spies.end(), qsizetype(0),
            [](qsizetype sum, const auto &spy) { return sum + spy->size(); });
    }

private:
    std::vector<std::unique_ptr<QSignalSpy>> m_spies;
};

/// How many pixels above the chart differ; below it the tip may lie.
double changedAbove(const QImage &before, const QImage &after, double chartTop)
{
    double changed = 0;
    for (int y = 0; y < std::min(qFloor(chartTop), before.height()); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            changed += before.pixel(x, y) != after.pixel(x, y) ? 1 : 0;
        }
    }
    return changed;
}

} // namespace

QList<Row> hoverRows()
{
    Motion::setReduced(true);
    Stage stage;
    stage.model().loadStats(Canned::statistics());
    stage.model().setLimits(Canned::limits());
    stage.model().setExpanded(true);
    stage.show();
    Q_UNUSED(stage.settle());
    const Listener model(stage.model());
    const Listener dashboard(stage.dashboard());
    const auto *chart = stage.window().rootObject()->findChild<HistoryChart *>();
    Q_ASSERT(chart);
    const QImage before = stage.window().grabWindow();
    int bar = 0;
    const double time = medianTimes(200, {{[&] {
        bar = (bar + 1) % 14;
        stage.model().hover().setX(firstBar + bar * oneBar);
        drawFrame(stage.window());
    }}}).constFirst();
    const QImage after = stage.window().grabWindow();
    Motion::setReduced(false);
    const auto announced = static_cast<double>(model.heard() + dashboard.heard());
    return {
        {QStringLiteral("hover: signals besides its own"), announced, 0, QString(),
            QStringLiteral("200 moves")},
        {QStringLiteral("hover: pixels that change above the chart"),
            changedAbove(before, after, chart->mapToScene({}).y()), 0, QString(), QString()},
        {QStringLiteral("hover another bar"), time, 16.7, QStringLiteral("ms"), QString()},
    };
}
