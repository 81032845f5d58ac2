#include "widget/app/Services.h"

#include "widget/core/Paths.h"
#include "widget/platform/secretStore.h"
#include "widget/sources/AppVersion.h"
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

AccountPoller::Fetch askAccount(const Clock &clock)
{
    const auto keychain = [](QObject *owner) {
        return secretStore::lookup(
            QStringLiteral("Claude Code-credentials"), programRunner(), owner);
    };
    const QUrl endpoint(QStringLiteral(KESTRELBAY_API_HOST "/api/oauth/usage"));
    return [source = AccountUsage::Source {endpoint, keychain, [&clock] { return clock.now(); }}](
               QObject *owner) { return AccountUsage::fetch(source, owner); };
}

UpdateChecker::Fetch askSite()
{
    return [](const QString &current, QObject *owner) {
        return UpdateCheck::fetch(current, AppVersion::site(), owner);
    };
}

/// What starts the widget: the launcher beside the program, which fills the data folder first.
QString startedAtLogin()
{
    const QDir folder(QCoreApplication::applicationDirPath());
#ifdef Q_OS_MACOS
    return QDir::cleanPath(folder.filePath(QStringLiteral("../.."))); // the bundle
#else
    const QString launcher = folder.filePath(QStringLiteral("kestrelbay-launch"));
    return QFileInfo::exists(launcher) ? launcher : QCoreApplication::applicationFilePath();
#endif
}

} // namespace

Services Services::real(const Clock &clock, ReducedMotion &systemMotion)
{
    return {clock, askAccount(clock), askSite(), realSleeper(),
        LoginItem(Paths::launchAgent(), startedAtLogin()), systemMotion};
}
