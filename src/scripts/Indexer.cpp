#include "scripts/Indexer.h"

#include "core/Paths.h"
#include "core/WidgetLog.h"
#include "model/WidgetModel.h"
#include "scripts/Node.h"
#include <QFileInfo>

namespace {

/// What a shell exits with when it finds no such command.
constexpr int commandNotFound = 127;

/// The sync script does the indexing as well, so where it is installed it runs instead.
const QString &chosenScript()
{
    return QFileInfo::exists(Paths::sync()) ? Paths::sync() : Paths::indexer();
}

} // namespace

Indexer::Indexer(WidgetModel &model, const Clock &clock, QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_clock(clock)
{
}

Indexer::~Indexer()
{
    if (m_indexer) {
        m_indexer->disconnect(this);
        m_indexer->terminate();
        m_indexer->waitForFinished(
            1000); // the program is ending; nothing else waits for this thread
    }
}

void Indexer::startIndexer()
{
    if (m_indexer || !QFileInfo::exists(chosenScript())) {
        return;
    }
    m_lastIndex = m_clock.now();
    m_indexer = Node::process({chosenScript()});
    m_indexer->setStandardInputFile(QProcess::nullDevice());
    m_indexer->setStandardOutputFile(QProcess::nullDevice());
    m_indexer->setStandardErrorFile(QProcess::nullDevice());
    connect(m_indexer.get(), &QProcess::finished, this, &Indexer::indexerFinished);
    // Queued, so that a start that fails at once does not delete the process under its own feet.
    connect(
        m_indexer.get(), &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                failedToStart();
            }
        },
        Qt::QueuedConnection);
    m_indexer->start();
}

void Indexer::failedToStart()
{
    WidgetLog::write(u"indexer did not start: " % m_indexer->errorString());
    m_indexer.reset();
}

void Indexer::indexerFinished(int status)
{
    m_indexer.release()->deleteLater();
    m_model.setNoNode(status == commandNotFound);
    m_model.setCollectFailed(status != 0);
    if (status != 0) {
        const QString why =
            status == commandNotFound ? QStringLiteral(" (node not found)") : QString();
        WidgetLog::write(u"indexer exited with status " % QString::number(status) % why);
    }
    Q_EMIT finished(status);
}

#include "moc_Indexer.cpp"
