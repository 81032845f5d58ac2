#include "widget/core/dataFolder.h"

#include "widget/core/Paths.h"
#include <QDir>
#include <QFile>

bool makeDataFolder()
{
    const QString &folder = Paths::dir();
    if (QDir(folder).exists()) {
        return true;
    }
    return QDir().mkpath(folder)
        && QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}
