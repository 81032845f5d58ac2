#include "widget/app/makeView.h"

#include <QQmlComponent>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(KestrelbayPlugin)

std::unique_ptr<QQuickItem> makeView(
    QQmlEngine &engine, const QString &path, const QVariantMap &properties)
{
    const QString module = QStringLiteral("qrc:/qt/qml");
    engine.addImportPath(module);
    QQmlComponent component(&engine, QUrl(module % u"/Kestrelbay/" % path));
    std::unique_ptr<QQuickItem> view;
    if (component.isReady()) {
        view.reset(qobject_cast<QQuickItem *>(component.createWithInitialProperties(properties)));
    }
    if (!view) {
        qFatal("%s", qUtf8Printable(component.errorString()));
    }
    return view;
}
