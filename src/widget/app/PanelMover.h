#pragma once

#include "widget/core/Clock.h"
#include <functional>
#include <optional>
#include <QObject>
#include <QRectF>
#include <QVariantAnimation>

class FloatingPanel;

/// Moves the panel: `glide` animates, `jump` does not. Of several glides only the latest counts.
class PanelMover final : public QObject {
    Q_OBJECT

public:
    using Time = std::chrono::milliseconds;

    PanelMover(FloatingPanel &panel, const Clock &clock, QObject *parent = nullptr);

    /// Where a running glide is heading for.
    [[nodiscard]] const std::optional<QRectF> &frameTarget() const { return m_frameTarget; }

    /// Moves the panel there, easing out, and fades it to `alpha` where one is given; else a fade
    /// that runs goes on.
    void glide(const QRectF &to, std::optional<double> alpha, Time duration);
    void jump(const QRectF &to);
    /// Fades the panel out, easing in. Another fade takes its place, and then nothing follows.
    void fadeOut(Time duration, const std::function<void()> &then);
    /// The same at once, to any opacity.
    void setOpacity(double opacity);
    /// Ends a glide that should be over by now.
    void finishIfOverdue();

Q_SIGNALS:
    /// A glide has begun; for this long nothing may disturb it.
    void gliding(std::chrono::milliseconds quiet);
    void finished();

private:
    void step(double progress);
    void glideFinished(qint64 ticket);
    void show(double opacity);
    void fade(double to, const QEasingCurve &curve, Time duration);

    FloatingPanel &m_panel;
    const Clock &m_clock;
    QVariantAnimation m_glide;
    QVariantAnimation m_fade;
    QRectF m_from;
    std::optional<QRectF> m_frameTarget;
    qint64 m_frameTicket = 0;      ///< glides and jumps so far
    qint64 m_glideTicket = 0;      ///< of the glide that runs
    TimePoint m_glideDeadline {};  ///< when the running glide must be over
    std::function<void()> m_faded; ///< what follows the fade
};
