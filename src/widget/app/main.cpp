#include "widget/app/AppDelegate.h"
#include "widget/core/Clock.h"
#include "widget/core/dataFolder.h"
#include "widget/core/Paths.h"
#include "widget/core/useOneHeap.h"
#include "widget/platform/ExitSignals.h"
#include "widget/platform/keepPrivate.h"
#include "widget/platform/SingleInstance.h"
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
            qputenv(variable, "xcb");
        }
    }
    ~XWayland()
    {
        if (m_wished) {
            m_before.isNull() ? qunsetenv(variable) : qputenv(variable, m_before);
        }
    }
    Q_DISABLE_COPY_MOVE(XWayland)

private:
    static constexpr const char *variable = "QT_QPA_PLATFORM";

    QByteArray m_before = qgetenv(variable);
    bool m_wished = qEnvironmentVariableIsSet("DISPLAY")
        && (m_before.isEmpty() || m_before.startsWith("wayland"));
};

/// Ends when the session does. Otherwise Qt would close each window first, and the panel refuses:
/// to close it only puts it away.
class Application final : public QApplication {
public:
    using QApplication::QApplication;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::Quit) {
            exit();
            return true;
        }
        return QApplication::event(event);
    }
};

int run(QApplication &application, ReducedMotion &systemMotion)
{
    // Not quit(), which a window could refuse.
    const ExitSignals signalled;
    QObject::connect(&signalled, &ExitSignals::exitRequested, [] { QCoreApplication::exit(); });
    const SystemClock clock;
    AppDelegate delegate(Services::real(clock, systemMotion));
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
    useOneHeap();
    keepPrivate();
    makeDataFolder();
    const SingleInstance instance(Paths::lock());
    if (instance.anotherRuns()) {
        return 0;
    }
    // A third of the memory and a seventh of the time to the first frame, and it draws all we need.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    nameApplication();
    std::optional<XWayland> xWayland(std::in_place);
    Application application(argc, argv);
    xWayland.reset();
    ReducedMotion systemMotion;
    systemMotion.watch(); // first of all, so that the answer comes while the rest loads
    QGuiApplication::setQuitOnLastWindowClosed(false);
    chooseFont();
    return run(application, systemMotion);
}
