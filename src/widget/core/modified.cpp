#include "widget/core/modified.h"

#include <QFile>
#include <sys/stat.h>

std::optional<TimePoint> modified(const QString &path)
{
    struct stat status { };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return std::nullopt;
    }
#ifdef Q_OS_MACOS
    const timespec &time = status.st_mtimespec;
#else
    const timespec &time = status.st_mtim;
#endif
    return TimePoint(std::chrono::seconds(time.tv_sec)
        + std::chrono::floor<std::chrono::milliseconds>(std::chrono::nanoseconds(time.tv_nsec)));
}
