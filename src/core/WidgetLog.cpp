#include "core/WidgetLog.h"

#include "core/Clock.h"
#include "core/dataFolder.h"
#include "core/Paths.h"
#include <QDateTime>
#include <QFile>
#include <QSaveFile>
#include <QThreadPool>

namespace {

constexpr qint64 trimBeyond = 262'144;
constexpr qint64 keptByTrim = 131'072;

/// One thread that ends when it is idle, so that the log costs nothing while it is silent.
class LogQueue final {
public:
    LogQueue()
    {
        m_pool.setObjectName(QLatin1String("dev.harrowgate.kestrelbay.log"));
        m_pool.setMaxThreadCount(1);
    }

    template <typename Work> void add(Work work) { m_pool.start(std::move(work)); }
    void drain() { m_pool.waitForDone(); }

private:
    QThreadPool m_pool;
};

LogQueue &queue()
{
    static LogQueue instance;
    return instance;
}

QByteArray stampedLine(const QString &message)
{
    const qint64 ms = SystemClock().now().time_since_epoch().count();
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(ms);
    const QString stamp = local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODate);
    return QString(stamp % u' ' % message % u'\n').toUtf8();
}

/// Keeps the newest whole lines of a log that has grown too long.
void trim(const QString &path)
{
    QFile file(path);
    if (file.size() <= trimBeyond || !file.open(QIODevice::ReadOnly)) {
        return;
    }
    QByteArray kept = file.readAll().right(keptByTrim);
    if (const qsizetype lineEnd = kept.indexOf('\n'); lineEnd >= 0) {
        kept.remove(0, lineEnd + 1);
    }
    QSaveFile replacement(path);
    if (replacement.open(QIODevice::WriteOnly)) {
        replacement.write(kept);
        replacement.commit();
    }
}

void append(const QString &path, const QByteArray &line)
{
    makeDataFolder();
    trim(path);
    QFile file(path);
    const bool isNew = !file.exists();
    if (file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        if (isNew) {
            file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        }
        file.write(line);
    }
}

} // namespace

namespace WidgetLog {

void write(const QString &message)
{
    // The path is taken here: at exit the queue may outlive it.
    queue().add([path = Paths::log(), line = stampedLine(message)] { append(path, line); });
}

void flush()
{
    queue().drain();
}

} // namespace WidgetLog
