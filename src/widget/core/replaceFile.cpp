#include "widget/core/replaceFile.h"

#include <cerrno>
#include <QSaveFile>
#include <unistd.h>

std::optional<QString> replaceFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    // Bytes that commit() itself passes on are lost without a word where the disk is full: it would
    // put an empty file in the old one's place. Nor does it look at what the disk says.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        return file.errorString();
    }
    if (::fsync(file.handle()) != 0) {
        return qt_error_string(errno);
    }
    return file.commit() ? std::nullopt : std::optional(file.errorString());
}
