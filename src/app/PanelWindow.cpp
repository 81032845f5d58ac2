#include "app/PanelWindow.h"

#include "model/Dashboard.h"
#include "views/PanelActions.h"
#include <QGuiApplication>
#include <QMoveEvent>
#include <QQmlEngine>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(KestrelbayPlugin)

PanelWindow::PanelWindow(Dashboard &dashboard, PanelActions &actions)
{
    setTitle(QStringLiteral("Kestrelbay"));
    setFlags(Qt::Window | Qt::FramelessWindowHint);
    setColor(Qt::transparent);
    setResizeMode(QQuickView::SizeViewToRootObject);
    engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    setInitialProperties({
        {QStringLiteral("dashboard"), QVariant::fromValue(&dashboard)},
        {QStringLiteral("actions"), QVariant::fromValue(&actions)},
    });
    setSource(QUrl(QStringLiteral("qrc:/qt/qml/Kestrelbay/Panel.qml")));
    connect(&actions, &PanelActions::moveRequested, this, [this] {
        m_dragged = true;
        startSystemMove();
    });
}

void PanelWindow::present(const std::optional<WindowSpot> &spot, bool visible)
{
    if (spot) {
        const QPoint corner = QPointF(spot->left, spot->top).toPoint();
        if (QGuiApplication::screenAt(corner)) {
            setPosition(corner);
        }
    }
    visible ? show() : showMinimized();
}

bool PanelWindow::event(QEvent *event)
{
    if (event->type() == QEvent::Close) {
        event->ignore();
        Q_EMIT closeRequested();
        return true;
    }
    return QQuickView::event(event);
}

void PanelWindow::moveEvent(QMoveEvent *event)
{
    QQuickView::moveEvent(event);
    if (m_dragged) {
        Q_EMIT userMoved(event->pos());
    }
}

#include "moc_PanelWindow.cpp"
