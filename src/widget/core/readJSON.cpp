#include "widget/core/readJSON.h"

#include <QFile>
#include <QFileInfo>

std::optional<QByteArray> readJSON(const QString &path, qint64 most)
{
    // A named pipe in the file's place would make the reader wait for ever.
    if (!QFileInfo(path).isFile()) {
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const qint64 size = file.size();
    if (size > most) {
        return std::nullopt;
    }
    QByteArray bytes = file.read(size); // and no more, should it grow meanwhile
    if (file.error() != QFileDevice::NoError) {
        return std::nullopt;
    }
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        bytes.remove(0, 3);
    }
    return bytes;
}
