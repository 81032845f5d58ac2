// kestrelbay-bench-empty: an empty Qt Quick window like the panel's, to compare with.

#include <memory>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

int main(int argc, char *argv[])
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\n"
                      "Window {\n"
                      "    width: 344; height: 640; visible: true; color: 'transparent'\n"
                      "    flags: Qt.Window | Qt.FramelessWindowHint\n"
                      "}\n",
        {});
    const std::unique_ptr<QObject> window(component.create());
    if (!window) {
        qFatal("%s", qUtf8Printable(component.errorString()));
    }
    return QGuiApplication::exec();
}
