#include "app/AppDelegate.h"
#include "core/Clock.h"
#include "core/dataFolder.h"
#include "core/Paths.h"
#include "platform/ExitSignals.h"
#include "platform/SingleInstance.h"
#include <optional>
#include <QApplication>
#include <QFontDatabase>
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

/// On Wayland the widget runs through XWayland, where a client may place its windows. The wish is
/// for this program alone, and not for those that it starts.
class XWayland final {
public:
    XWayland()
    {
        if (m_wished) {
            qputenv("QT_QPA_PLATFORM", "xcb");
        }
    }
    ~XWayland()
    {
        if (m_wished) {
            qunsetenv("QT_QPA_PLATFORM");
        }
    }
    Q_DISABLE_COPY_MOVE(XWayland)

private:
    bool m_wished =
        qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
};

int run(QApplication &application)
{
    // Not quit(), which a window could refuse.
    const ExitSignals signalled;
    QObject::connect(&signalled, &ExitSignals::exitRequested, [] { QCoreApplication::exit(); });
    const SystemClock clock;
    AppDelegate delegate(Services::real(clock));
    // At the end of the program and, should that come too fast, at the end of the session.
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &delegate,
        &AppDelegate::applicationWillTerminate);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &delegate,
        &AppDelegate::applicationWillTerminate, Qt::DirectConnection);
    delegate.applicationDidFinishLaunching();
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    makeDataFolder();
    const SingleInstance instance(Paths::lock());
    if (instance.anotherRuns()) {
        return 0;
    }
    // A third of the memory and a seventh of the time to the first frame, and it draws all we need.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    nameApplication();
    std::optional<XWayland> xWayland(std::in_place);
    QApplication application(argc, argv);
    xWayland.reset();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    chooseFont();
    return run(application);
}
