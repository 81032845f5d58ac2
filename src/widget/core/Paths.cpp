#include "widget/core/Paths.h"

#include "formats/Folders.h"
#include <QDir>
#include <QFile>

namespace {

QString fromPath(const std::filesystem::path &path)
{
    return QFile::decodeName(path.c_str());
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
    static const QString path = fromPath(Folders::home());
    return path;
}

const QString &claude()
{
    static const QString path = fromPath(Folders::claude());
    return path;
}

const QString &credentials()
{
    static const QString path = claude() % u"/.credentials.json";
    return path;
}

const QString &dir()
{
    static const QString path = fromPath(Folders::data());
    return path;
}

const QString &codexHome()
{
    static const QString path = fromPath(Folders::namedCodex().value_or(Folders::codex()));
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
