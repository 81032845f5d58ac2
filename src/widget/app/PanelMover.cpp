#include "widget/app/PanelMover.h"

#include "widget/app/FloatingPanel.h"
#include "widget/platform/sendRequests.h"
#include "widget/views/theme/Motion.h"
#include <utility>

using namespace std::chrono_literals;

namespace {

double between(double from, double to, double progress)
{
    return from + (to - from) * progress;
}

QRectF between(const QRectF &from, const QRectF &to, double progress)
{
    return {between(from.x(), to.x(), progress), between(from.y(), to.y(), progress),
        between(from.width(), to.width(), progress), between(from.height(), to.height(), progress)};
}

} // namespace

PanelMover::PanelMover(FloatingPanel &panel, const Clock &clock, QObject *parent)
    : QObject(parent)
    , m_panel(panel)
    , m_clock(clock)
{
    m_glide.setStartValue(0.0);
    m_glide.setEndValue(1.0);
    m_glide.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_glide, &QVariantAnimation::valueChanged, this,
        [this](const QVariant &progress) { step(progress.toDouble()); });
    connect(&m_glide, &QVariantAnimation::finished, this, [this] { glideFinished(m_glideTicket); });
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant &opacity) {
        if (m_fade.state() == QAbstractAnimation::Running) {
            show(opacity.toDouble());
        }
    });
    connect(&m_fade, &QVariantAnimation::finished, this, [this] {
        if (const auto then = std::exchange(m_faded, {})) {
            then();
        }
    });
}

void PanelMover::glide(const QRectF &to, std::optional<double> alpha, Time duration)
{
    if (Motion::reduced()) {
        jump(to);
        if (alpha) {
            setOpacity(*alpha);
        }
        return;
    }
    m_glide.stop();
    m_frameTarget.reset(); // a new duration makes the old glide take one more step
    m_glide.setDuration(static_cast<int>(duration.count()));
    m_glideTicket = ++m_frameTicket;
    m_frameTarget = to;
    m_glideDeadline = m_clock.now() + duration + 500ms;
    m_from = m_panel.frame();
    if (m_from.size() != to.size()) {
        m_panel.openStage(m_from.united(to));
    }
    Q_EMIT gliding(duration + 100ms);
    m_glide.start();
    if (alpha) {
        fade(*alpha, QEasingCurve::OutCubic, duration);
    }
}

void PanelMover::step(double progress)
{
    if (m_frameTarget) {
        m_panel.setFrame(between(m_from, *m_frameTarget, progress));
    }
}

void PanelMover::glideFinished(qint64 ticket)
{
    if (ticket != m_frameTicket || !m_frameTarget) {
        return;
    }
    m_panel.closeStage(*std::exchange(m_frameTarget, std::nullopt));
    Q_EMIT finished();
}

void PanelMover::finishIfOverdue()
{
    if (m_frameTarget && m_clock.now() > m_glideDeadline) {
        m_glide.stop();
        step(1);
        glideFinished(m_frameTicket);
    }
}

void PanelMover::jump(const QRectF &to)
{
    ++m_frameTicket;
    m_glide.stop();
    m_frameTarget.reset();
    m_panel.closeStage(to);
}

void PanelMover::fadeOut(Time duration, const std::function<void()> &then)
{
    fade(0, QEasingCurve::InCubic, duration);
    m_faded = then;
}

void PanelMover::fade(double to, const QEasingCurve &curve, Time duration)
{
    m_fade.stop();
    m_faded = {};
    m_fade.setEasingCurve(curve);
    m_fade.setDuration(static_cast<int>(duration.count()));
    m_fade.setStartValue(m_panel.opacity());
    m_fade.setEndValue(to);
    m_fade.start();
}

void PanelMover::setOpacity(double opacity)
{
    m_fade.stop();
    show(opacity);
}

/// Nothing may be drawn while the panel fades, and with no frame to send nothing else would be
/// sent.
void PanelMover::show(double opacity)
{
    m_panel.setOpacity(opacity);
    sendRequests();
}

#include "moc_PanelMover.cpp"
