#include "widget/app/FloatingPanel.h"

#include "widget/app/makeView.h"
#include "widget/model/Dashboard.h"
#include "widget/views/PanelActions.h"
#include <cmath>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QMoveEvent>

using namespace std::chrono_literals;

namespace {

/// Has an item work out its size, which it would otherwise put off until it is drawn.
void polish(QQuickItem &item)
{
    for (QQuickItem *child : item.childItems()) {
        polish(*child);
    }
    item.ensurePolished();
}

} // namespace

FloatingPanel::FloatingPanel(Dashboard &dashboard, PanelActions &actions)
{
    setTitle(QStringLiteral("Kestrelbay"));
    setFlags(Qt::Window | Qt::FramelessWindowHint);
    setColor(Qt::transparent);
    setProperty("_q_showWithoutActivating", true); // Qt's own name for it
    m_root = makeView(m_engine, QStringLiteral("Panel.qml"),
        {{QStringLiteral("dashboard"), QVariant::fromValue(&dashboard)},
            {QStringLiteral("actions"), QVariant::fromValue(&actions)}});
    m_root->setParentItem(contentItem());
    watchContent();
    m_patience.setSingleShot(true);
    m_patience.setInterval(250ms);
    connect(&m_patience, &QTimer::timeout, this, &FloatingPanel::arrive);
    fitContent();
    QCoreApplication::instance()->installEventFilter(this); // ahead of those of the window
}

FloatingPanel::~FloatingPanel() = default;

void FloatingPanel::watchContent()
{
    // Width and height change one after the other, and the height once texts are laid out.
    const auto changed = [this] {
        if (!std::exchange(m_unsettled, true)) {
            QMetaObject::invokeMethod(this, &FloatingPanel::settle, Qt::QueuedConnection);
        }
    };
    connect(m_root.get(), &QQuickItem::implicitWidthChanged, this, changed);
    connect(m_root.get(), &QQuickItem::implicitHeightChanged, this, changed);
}

void FloatingPanel::settle()
{
    polish(*m_root);
    m_unsettled = false;
    Q_EMIT contentResized(contentSize());
}

void FloatingPanel::setRoom(double height)
{
    const QVariant room = std::floor(height);
    if (m_root->property("room") != room) {
        m_root->setProperty("room", room);
        polish(*m_root);
    }
}

QSizeF FloatingPanel::contentSize() const
{
    return {std::ceil(m_root->implicitWidth()), std::ceil(m_root->implicitHeight())};
}

bool FloatingPanel::isShown() const
{
    return isVisible() && visibility() != QWindow::Minimized;
}

void FloatingPanel::fitContent()
{
    polish(*m_root);
    setFrame({m_frame.topLeft(), contentSize()});
}

void FloatingPanel::setFrame(const QRectF &frame)
{
    m_frame = frame;
    m_root->setSize(frame.size());
    if (m_staged) {
        m_root->setPosition(frame.topLeft() - m_corner);
    } else {
        ask(frame.toRect());
    }
}

void FloatingPanel::ask(const QRect &geometry)
{
    m_asked = geometry.topLeft();
    m_patience.start();
    m_heeded = isVisible() && m_corner == m_asked;
    setGeometry(geometry);
    if (!isVisible()) { // nothing will tell
        m_corner = m_asked;
        m_root->setPosition(m_frame.topLeft() - m_corner);
    }
}

void FloatingPanel::openStage(const QRectF &stage)
{
    if (m_translucent) {
        m_staged = true;
        ask(stage.toAlignedRect());
    }
}

void FloatingPanel::closeStage(const QRectF &frame)
{
    m_staged = false;
    setFrame(frame);
}

void FloatingPanel::moveEvent(QMoveEvent *event)
{
    QQuickWindow::moveEvent(event);
    m_corner = event->pos();
    arrive();
}

void FloatingPanel::resizeEvent(QResizeEvent *event)
{
    QQuickWindow::resizeEvent(event);
    arrive();
}

/// The window is where and as large as the window system has it now, whatever was asked for.
void FloatingPanel::arrive()
{
    if (m_staged) {
        m_root->setPosition(m_frame.topLeft() - m_corner);
        return;
    }
    m_root->setPosition({0, 0});
    if (m_corner == m_asked) {
        m_heeded = true;
    } else if (m_patience.isActive()) {
        return; // a window manager that takes a window over has it in a corner for a moment
    }
    m_frame.moveTopLeft(m_corner);
    if (m_corner != m_asked && m_heeded) {
        Q_EMIT moved();
    }
}

void FloatingPanel::setLevel(Level level)
{
    // The one that hangs from the tray is no window of its own to switch to.
    const Qt::WindowFlags kind = level == Level::StatusBar ? Qt::Tool : Qt::Window;
    const Qt::WindowFlags above =
        level == Level::Normal ? Qt::WindowFlags() : Qt::WindowStaysOnTopHint;
    setFlags(kind | Qt::FramelessWindowHint | above);
}

void FloatingPanel::setTranslucent(bool translucent)
{
    m_translucent = translucent;
    m_root->setProperty("translucent", translucent);
    if (!translucent && m_staged) {
        closeStage(m_frame);
    }
}

void FloatingPanel::orderFront()
{
    setWindowStates(Qt::WindowNoState);
    setVisible(true);
    raise();
}

void FloatingPanel::orderOut()
{
    m_dragFrom.reset();
    setVisible(false);
}

void FloatingPanel::drag()
{
    m_asked = m_corner; // wherever it is: from here it is moved
    m_heeded = true;
    m_patience.stop();
    if (!startSystemMove()) {
        m_dragFrom = QCursor::pos() - position();
    }
}

void FloatingPanel::mouseMoveEvent(QMouseEvent *event)
{
    QQuickWindow::mouseMoveEvent(event);
    if (m_dragFrom && event->buttons() & Qt::LeftButton) {
        setPosition(event->globalPosition().toPoint() - *m_dragFrom);
    }
}

void FloatingPanel::mouseReleaseEvent(QMouseEvent *event)
{
    QQuickWindow::mouseReleaseEvent(event);
    m_dragFrom.reset();
}

void FloatingPanel::keyPressEvent(QKeyEvent *event)
{
    QQuickWindow::keyPressEvent(event);
    if (event->isAccepted()) {
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        Q_EMIT escapePressed();
    } else if (event->key() == Qt::Key_Menu
        || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
        Q_EMIT contextClicked(m_frame.center().toPoint());
    }
}

bool FloatingPanel::isContextClick(const QMouseEvent &event)
{
    return event.button() == Qt::RightButton
        || (event.button() == Qt::LeftButton && event.modifiers() & Qt::ControlModifier);
}

bool FloatingPanel::event(QEvent *event)
{
    if (event->type() == QEvent::Close) {
        event->ignore();
        Q_EMIT closeRequested();
        return true;
    }
    return QQuickWindow::event(event);
}

/// Every press is seen here before Qt Quick's own tips are, which keep it from `event` while they
/// are shown.
bool FloatingPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != this || event->type() != QEvent::MouseButtonPress) {
        return QQuickWindow::eventFilter(watched, event);
    }
    requestActivate(); // not every window manager does, and there may be none
    const auto &press = static_cast<const QMouseEvent &>(*event);
    if (!isContextClick(press)) {
        return false;
    }
    Q_EMIT contextClicked(press.globalPosition().toPoint());
    return true;
}

#include "moc_FloatingPanel.cpp"
