#pragma once

#include <gtest/gtest.h>
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

/// The same, as a program that can be run.
inline void writeProgram(const QString &path, const QByteArray &bytes)
{
    writeFile(path, bytes);
    ASSERT_TRUE(
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}
