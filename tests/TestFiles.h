#pragma once

#include <gtest/gtest.h>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

/// Puts a file where a test wants it, with the folders above it.
inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// The same, with a modification date of its own, in seconds since 1970.
inline void writeVersion(const QString &path, const QByteArray &bytes, int stamp)
{
    writeFile(path, bytes);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::Append));
    ASSERT_TRUE(
        file.setFileTime(QDateTime::fromSecsSinceEpoch(stamp), QFileDevice::FileModificationTime));
}

/// Puts a file there that no memory can hold, though it takes no room on the disk.
inline void writeEndless(const QString &path)
{
    writeFile(path, "");
    ASSERT_TRUE(QFile::resize(path, qint64(1) << 42));
}

/// The same as writeFile, as a program that can be run.
inline void writeProgram(const QString &path, const QByteArray &bytes)
{
    writeFile(path, bytes);
    ASSERT_TRUE(
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}
