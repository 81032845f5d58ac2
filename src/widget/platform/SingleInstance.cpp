#include "widget/platform/SingleInstance.h"

#include <cerrno>
#include <fcntl.h>
#include <QFile>
#include <sys/file.h>
#include <unistd.h>

SingleInstance::SingleInstance(const QString &file)
    // Programs that are started later must not inherit the hold.
    : m_file(::open(QFile::encodeName(file).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600))
{
    m_anotherRuns = m_file >= 0 && ::flock(m_file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

SingleInstance::~SingleInstance()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
}
