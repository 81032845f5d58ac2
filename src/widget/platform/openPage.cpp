#include "widget/platform/openPage.h"

#include "widget/platform/keepPrivate.h"
#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <unistd.h>

namespace {

/// What is started goes on in a process that is nobody's child: a browser outlives us.
void becomeTheUsers()
{
    undoKeepPrivate();
    ::setsid();
    if (::fork() != 0) {
        ::_exit(0);
    }
}

} // namespace

void openPage(const QUrl &page)
{
    // Of itself Qt starts the same program, but has it inherit what holds for this one, and so does
    // QProcess::startDetached. Where there is none, as on macOS, Qt knows another way.
    const QString program = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (program.isEmpty()) {
        QDesktopServices::openUrl(page);
        return;
    }
    auto *const opener = new QProcess;
    opener->setProgram(program);
    opener->setArguments({QString::fromLatin1(page.toEncoded())});
    opener->setStandardInputFile(QProcess::nullDevice());
    opener->setProcessChannelMode(QProcess::ForwardedChannels);
    opener->setChildProcessModifier(becomeTheUsers);
    QObject::connect(opener, &QProcess::stateChanged, opener, [opener](QProcess::ProcessState now) {
        if (now == QProcess::NotRunning) {
            opener->deleteLater();
        }
    });
    opener->start();
}
