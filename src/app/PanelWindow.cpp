#include "app/PanelWindow.h"

#include "model/WidgetModel.h"
#include "views/PanelActions.h"
#include <QMouseEvent>

PanelWindow::PanelWindow(WidgetModel &model, PanelActions &actions)
{
    setTitle(QStringLiteral("Kestrelbay"));
    setFlags(Qt::Window | Qt::FramelessWindowHint);
    setColor(Qt::transparent);
    setResizeMode(QQuickView::SizeViewToRootObject);
    setInitialProperties({
        {QStringLiteral("model"), QVariant::fromValue(&model)},
        {QStringLiteral("actions"), QVariant::fromValue(&actions)},
    });
    setSource(QUrl(QStringLiteral("qrc:/qt/qml/Kestrelbay/Panel.qml")));
}

void PanelWindow::mousePressEvent(QMouseEvent *event)
{
    event->ignore();
    QQuickView::mousePressEvent(event);
    if (!event->isAccepted() && event->button() == Qt::LeftButton) {
        startSystemMove();
    }
}

#include "moc_PanelWindow.cpp"
