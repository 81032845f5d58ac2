#include "widget/scripts/Indexer.h"

#include "widget/core/Paths.h"
#include "widget/core/WidgetLog.h"
#include "widget/model/WidgetModel.h"
#include "widget/platform/ProcessRun.h"
#include "widget/scripts/Node.h"
#include <QFileInfo>
#include <utility>

namespace {

/// Gigabytes take minutes the first time, and nothing takes longer.
constexpr Seconds longestRun {3600};

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
        ProcessRun::end(*m_indexer);
    }
}

void Indexer::startIndexer()
{
    if (m_indexer) {
        endIfStuck();
        return;
    }
    if (!QFileInfo::exists(chosenScript())) {
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
            // Qt tells twice of a stream that could not be opened.
            if (error == QProcess::FailedToStart && m_indexer) {
                failedToStart();
            }
        },
        Qt::QueuedConnection);
    m_indexer->start();
}

/// A run that never ends would be the last one. A clock that is set back says nothing about it.
void Indexer::endIfStuck()
{
    if (elapsed(m_lastIndex, m_clock.now()) >= longestRun) {
        m_isEnded = true;
        ProcessRun::kill(*m_indexer);
    }
}

void Indexer::failedToStart()
{
    WidgetLog::write(u"indexer did not start: " % m_indexer->errorString());
    m_indexer.reset();
    m_model.setCollectFailed(true);
}

void Indexer::indexerFinished(int status)
{
    m_indexer.release()->deleteLater();
    const bool isEnded = std::exchange(m_isEnded, false);
    m_model.setNoNode(status == Node::notFound);
    m_model.setCollectFailed(status != 0);
    if (status != 0) {
        const QString why = isEnded ? QStringLiteral(" (ended by us, as it ran for over an hour)")
            : status == Node::notFound ? QStringLiteral(" (node not found)")
                                       : QString();
        WidgetLog::write(u"indexer exited with status " % QString::number(status) % why);
    }
    Q_EMIT finished(status);
}

#include "moc_Indexer.cpp"
