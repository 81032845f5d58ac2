#include "widget/views/InputView.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double notch = 120; // what Qt counts for one notch of a wheel
constexpr double verticalStep = 30;
constexpr double leastHorizontalStep = 8;

} // namespace

InputView::InputView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setAcceptHoverEvents(true);
}

void InputView::setCell(double cell)
{
    m_cell = cell;
    Q_EMIT cellChanged();
}

void InputView::hoverEnterEvent(QHoverEvent *event)
{
    Q_EMIT hover(event->position().x());
}

void InputView::hoverMoveEvent(QHoverEvent *event)
{
    Q_EMIT hover(event->position().x());
}

void InputView::hoverLeaveEvent(QHoverEvent *)
{
    Q_EMIT unhover();
}

void InputView::wheelEvent(QWheelEvent *event)
{
    event->accept();
    if (event->phase() == Qt::ScrollBegin) {
        m_travel = 0;
    }
    // The end of a gesture brings no way, so it does not tell in what unit ways are.
    if (event->pixelDelta().isNull() && event->angleDelta().isNull()) {
        return;
    }
    const bool precise = event->hasPixelDelta();
    const QPointF delta =
        precise ? QPointF(event->pixelDelta()) : QPointF(event->angleDelta()) / notch;
    const bool horizontal = std::abs(delta.y()) < std::abs(delta.x());
    // Points left over by a trackpad would be as many notches.
    if (std::exchange(m_precise, precise) != precise) {
        m_travel = 0;
    }
    if (!precise) {
        scroll(horizontal ? delta.x() : delta.y(), 1);
    } else if (horizontal) {
        scroll(delta.x(), std::max(leastHorizontalStep, m_cell));
    } else {
        scroll(delta.y(), verticalStep);
    }
}

void InputView::scroll(double delta, double step)
{
    m_travel += delta;
    // Less than a step was left and deltas come as integers of at least as fine a unit: no
    // overflow.
    const int n = static_cast<int>(m_travel / step);
    if (n != 0) {
        m_travel -= step * n;
        Q_EMIT steps(n);
    }
}

#include "moc_InputView.cpp"
