#pragma once

#include <QQuickItem>

/// The transparent view over the plot that takes the pointer and the scroll wheel.
class InputView : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double cell READ cell WRITE setCell NOTIFY cellChanged)

public:
    explicit InputView(QQuickItem *parent = nullptr);

    /// The way from one bar to the next; a swipe of that length is one step.
    [[nodiscard]] double cell() const { return m_cell; }
    void setCell(double cell);

Q_SIGNALS:
    void cellChanged();
    /// Whole steps of the wheel or of a swipe, positive to older bars.
    void steps(int n);
    /// The pointer is this far from the left edge.
    void hover(double x);
    /// The pointer has left.
    void unhover();

protected:
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void scroll(double delta, double step);

    double m_cell = 20;
    double m_travel = 0;    ///< scrolled towards the next whole step
    bool m_precise = false; ///< whether that is in points, as trackpads tell, or in notches
};
