#include "Trial.h"

#include "fail.h"
#include "ownProgram.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>

namespace {

constexpr double mega = 1e6;

/// What it prints.
QByteArray run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The home is a matter of this program alone; others should start as they do for a user.
    environment.remove(QStringLiteral("LD_PRELOAD"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        fail(program % QStringLiteral(" failed"));
    }
    return process.readAllStandardOutput();
}

Cost costOf(const QStringList &command)
{
    constexpr double kilobytesInMega = 1e3;
    const QList<QByteArray> figures =
        run(ownProgram("kestrelbay-bench-run"), command).trimmed().split(' ');
    return {figures.value(0).toDouble(), figures.value(1).toDouble() / kilobytesInMega};
}

} // namespace

Trial::Trial(const QString &name, const QStringList &figures)
    : m_folder(QDir::current().absoluteFilePath(QStringLiteral("build/bench-data/") % name))
{
    run(ownProgram("kestrelbay-bench-home"), QStringList {m_folder} + figures);
    QDirIterator files(
        m_folder, {QStringLiteral("*.jsonl")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        m_files.append(files.next());
        m_bytes += files.fileInfo().size();
    }
    m_sizeBefore = QFileInfo(growingFile()).size();
}

Trial::~Trial()
{
    QFile::resize(growingFile(), m_sizeBefore);
    forget();
}

double Trial::megabytes() const
{
    return static_cast<double>(m_bytes) / mega;
}

QByteArray Trial::statistics() const
{
    QFile file(m_folder % QStringLiteral("/data/stats.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QStringLiteral("there is no ") % file.fileName());
    }
    return file.readAll();
}

void Trial::forget()
{
    QDir(m_folder % QStringLiteral("/data")).removeRecursively();
}

void Trial::grow(qint64 bytes)
{
    QFile more(m_folder % QStringLiteral("/growth.jsonl"));
    QFile session(growingFile());
    if (!more.open(QIODevice::ReadOnly) || !more.seek(m_grown) || !session.open(QIODevice::Append)
        || session.write(more.read(bytes)) != bytes) {
        fail(QStringLiteral("cannot add to ") % session.fileName());
    }
    m_grown += bytes;
}

Cost Trial::index()
{
    return costOf({ownProgram("kestrelbay-indexer"), QStringLiteral("--data"),
        m_folder % QStringLiteral("/data"), QStringLiteral("--claude"),
        m_folder % QStringLiteral("/claude"), QStringLiteral("--codex"),
        m_folder % QStringLiteral("/codex")});
}

Cost Trial::cat()
{
    return costOf(QStringList {QStringLiteral("cat")} + m_files);
}

Cost Trial::walk()
{
    return costOf({ownProgram("kestrelbay-bench-walk"), m_folder % QStringLiteral("/claude"),
        m_folder % QStringLiteral("/codex")});
}

QString Trial::growingFile() const
{
    return m_folder
        % QStringLiteral("/claude/projects/growing/00000000-0000-4000-8000-000000000000.jsonl");
}
