#include "app/PanelWindow.h"

#include "model/WidgetModel.h"
#include "views/PanelActions.h"
#include <QQmlEngine>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(KestrelbayPlugin)

PanelWindow::PanelWindow(WidgetModel &model, PanelActions &actions)
{
    setTitle(QStringLiteral("Kestrelbay"));
    setFlags(Qt::Window | Qt::FramelessWindowHint);
    setColor(Qt::transparent);
    setResizeMode(QQuickView::SizeViewToRootObject);
    engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    setInitialProperties({
        {QStringLiteral("model"), QVariant::fromValue(&model)},
        {QStringLiteral("actions"), QVariant::fromValue(&actions)},
    });
    setSource(QUrl(QStringLiteral("qrc:/qt/qml/Kestrelbay/Panel.qml")));
    connect(&actions, &PanelActions::moveRequested, this, &QWindow::startSystemMove);
}

#include "moc_PanelWindow.cpp"
