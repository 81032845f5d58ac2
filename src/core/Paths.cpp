#include "core/Paths.h"

#include <cerrno>
#include <pwd.h>
#include <QDir>
#include <QFile>
#include <unistd.h>
#include <vector>

namespace {

QString homeFromUserDatabase()
{
    constexpr std::size_t largest = 1 << 20;
    passwd entry {};
    passwd *found = nullptr;
    for (std::vector<char> buffer(4096); buffer.size() <= largest;
         buffer.resize(buffer.size() * 4)) {
        if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE) {
            continue;
        }
        const QString folder = found ? QFile::decodeName(found->pw_dir) : QString();
        if (QDir::isAbsolutePath(folder)) {
            return QDir::cleanPath(folder);
        }
        break;
    }
    // A user the database does not know (some containers): the best that is left.
    return QDir::homePath();
}

QString codexHomeFromEnvironment()
{
    const char *const variable = "CODEX_HOME";
    return qEnvironmentVariableIsSet(variable) ? QFile::decodeName(qgetenv(variable))
                                               : QString(Paths::home() % u"/.codex");
}

QString startAtLoginRecord()
{
#ifdef Q_OS_MACOS
    return Paths::home() % u"/Library/LaunchAgents/dev.harrowgate.kestrelbay.plist";
#else
    // Where the desktop looks for autostart entries is the desktop's choice, not ours.
    const QString chosen = QFile::decodeName(qgetenv("XDG_CONFIG_HOME"));
    const QString config =
        QDir::isAbsolutePath(chosen) ? chosen : QString(Paths::home() % u"/.config");
    return config % u"/autostart/dev.harrowgate.kestrelbay.desktop";
#endif
}

QString inDir(QStringView name)
{
    return Paths::dir() % u'/' % name;
}

} // namespace

namespace Paths {

const QString &home()
{
    static const QString path = homeFromUserDatabase();
    return path;
}

const QString &claude()
{
    static const QString path = home() % u"/.claude";
    return path;
}

const QString &credentials()
{
    static const QString path = claude() % u"/.credentials.json";
    return path;
}

const QString &dir()
{
    static const QString path = home() % u"/.kestrelbay";
    return path;
}

const QString &codexHome()
{
    static const QString path = codexHomeFromEnvironment();
    return path;
}

const QString &stats()
{
    static const QString path = inDir(u"stats.json");
    return path;
}

const QString &lock()
{
    static const QString path = inDir(u"widget.lock");
    return path;
}

const QString &state()
{
    static const QString path = inDir(u"state.json");
    return path;
}

const QString &log()
{
    static const QString path = inDir(u"widget.log");
    return path;
}

const QString &i18n()
{
    static const QString path = inDir(u"i18n.json");
    return path;
}

const QString &indexer()
{
    static const QString path = inDir(u"usage-stats.mjs");
    return path;
}

const QString &sync()
{
    static const QString path = inDir(u"usage-sync.mjs");
    return path;
}

const QString &syncStatus()
{
    static const QString path = inDir(u"sync-status.json");
    return path;
}

const QString &codexLimits()
{
    static const QString path = inDir(u"codex-limits.json");
    return path;
}

const QString &codexHook()
{
    static const QString path = inDir(u"codex-hook.mjs");
    return path;
}

const QString &limits()
{
    static const QString path = claude() % u"/usage-limits.json";
    return path;
}

const QString &launchAgent()
{
    static const QString path = startAtLoginRecord();
    return path;
}

} // namespace Paths
