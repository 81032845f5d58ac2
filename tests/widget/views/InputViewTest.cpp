#include "widget/views/InputView.h"
#include <gtest/gtest.h>
#include <limits>
#include <QCoreApplication>

namespace {

struct Turn {
    QPoint pixels;
    QPoint angle;
    Qt::ScrollPhase phase = Qt::NoScrollPhase;
};

Turn notches(double y, double x = 0, Qt::ScrollPhase phase = Qt::NoScrollPhase)
{
    return {{}, {qRound(x * 120), qRound(y * 120)}, phase};
}

Turn swipe(int x, int y, Qt::ScrollPhase phase = Qt::ScrollUpdate)
{
    return {{x, y}, {x, y}, phase};
}

TEST(InputView, turnsScrollingIntoSteps)
{
    constexpr int most = std::numeric_limits<int>::max();
    const Turn end {{}, {}, Qt::ScrollEnd};
    const struct {
        const char *what;
        QList<Turn> turns;
        QList<int> steps;
        double cell = 22;
    } rows[] = {{"a notch is a bar", {notches(1), notches(-2), notches(0.2, -1)}, {1, -2, -1}},
        {"fine notches add up, and what is over is kept",
            {notches(0.4), notches(0.4), notches(0.4), notches(0.8), notches(0.9)}, {1, 1}},
        {"back is the same way", {notches(0.9), notches(-1.8), notches(-0.2)}, {-1}},
        {"a new gesture starts from nothing",
            {notches(0.9), notches(0.9, 0, Qt::ScrollBegin), notches(0.2)}, {1}},
        {"a swipe moves with the bars", {swipe(21, 0), swipe(1, 0), swipe(-66, 3)}, {1, -3}},
        {"no narrower than a finger", {swipe(7, 0), swipe(1, 0)}, {1}, 5},
        {"upright it is slower", {swipe(0, 29), swipe(0, 1), swipe(0, -61)}, {1, -2}, 5},
        {"sideways only when more so", {swipe(29, 29), swipe(1, 1)}, {1}, 5},
        {"its end is no notch", {swipe(0, 29), end, swipe(0, 1, Qt::ScrollMomentum)}, {1}},
        {"points are not left over as notches", {swipe(0, 29), notches(1)}, {1}},
        {"far", {swipe(0, most), swipe(0, -most)}, {most / 30, -(most / 30)}},
        {"no cell", {swipe(8, 0)}, {1}, std::numeric_limits<double>::quiet_NaN()}};
    for (const auto &row : rows) {
        InputView view;
        view.setCell(row.cell);
        QList<int> taken;
        QObject::connect(&view, &InputView::steps, [&taken](int n) { taken << n; });
        for (const Turn &turn : row.turns) {
            QWheelEvent event(
                {5, 5}, {5, 5}, turn.pixels, turn.angle, Qt::NoButton, {}, turn.phase, false);
            event.ignore();
            QCoreApplication::sendEvent(&view, &event);
            EXPECT_TRUE(event.isAccepted()) << "nothing behind the chart scrolls";
        }
        EXPECT_EQ(taken, row.steps) << row.what;
    }
}

} // namespace
