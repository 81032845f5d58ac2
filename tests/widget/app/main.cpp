#include "widget/app/Saving.h"
#include <cstring>
#include <gtest/gtest.h>
#include <QApplication>
#include <QQuickWindow>

int main(int argc, char *argv[])
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], saveForEver) == 0) {
        saveUntilKilled();
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
