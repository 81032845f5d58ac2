#include <gtest/gtest.h>
#include <QApplication>
#include <QQuickWindow>

namespace {

/// A view that warns is a view that is broken.
void failOnWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtDebugMsg && type != QtInfoMsg
        && !text.startsWith(QLatin1String("QStandardPaths"))) {
        ADD_FAILURE() << text.toStdString();
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    qInstallMessageHandler(failOnWarning);
    const int status = RUN_ALL_TESTS();
    qInstallMessageHandler(nullptr);
    return status;
}
