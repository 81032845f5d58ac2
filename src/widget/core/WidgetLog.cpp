#include "widget/core/WidgetLog.h"

#include "widget/core/Clock.h"
#include "widget/core/dataFolder.h"
#include "widget/core/Paths.h"
#include "widget/core/replaceFile.h"
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
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
    // Made before the queue, these outlive it: at exit it still works through what is left.
    static_cast<void>(Paths::dir());
    static_cast<void>(Paths::log());
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
    if (file.size() <= trimBeyond || !file.open(QIODevice::ReadOnly)
        || !file.seek(file.size() - keptByTrim)) {
        return;
    }
    QByteArray kept = file.read(keptByTrim);
    if (file.error() != QFileDevice::NoError) {
        return;
    }
    if (const qsizetype lineEnd = kept.indexOf('\n'); lineEnd >= 0) {
        kept.remove(0, lineEnd + 1);
    }
    // A log that could not be trimmed is tried with the next line.
    static_cast<void>(replaceFile(path, kept));
}

void append(const QString &path, const QByteArray &line)
{
    makeDataFolder();
    trim(path);
    QFile file(path);
    const bool isNew = !file.exists();
    // A named pipe in the file's place would hold up the queue for ever.
    if ((isNew || QFileInfo(path).isFile())
        && file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        if (isNew) {
            file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        }
        const qint64 whole = file.size();
        if (file.write(line) != line.size()) {
            file.resize(whole); // or the next line would go on where half of this one ends
        }
    }
}

} // namespace

namespace WidgetLog {

void write(const QString &message)
{
    queue().add([line = stampedLine(message)] { append(Paths::log(), line); });
}

void flush()
{
    queue().drain();
}

} // namespace WidgetLog
