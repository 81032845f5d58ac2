#include "widget/platform/ExitSignals.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <QSocketNotifier>
#include <unistd.h>

namespace {

constexpr std::array handled {SIGTERM, SIGINT, SIGHUP};

/// Where the handler, which may do next to nothing, leaves word.
volatile std::sig_atomic_t wordTo = -1;

void leaveWord(int)
{
    const int before = errno;
    const char word = 0;
    [[maybe_unused]] const ssize_t written = ::write(wordTo, &word, 1);
    errno = before;
}

void handleAll(void (*handler)(int))
{
    struct sigaction action { };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : handled) {
        sigaction(signal, &action, nullptr);
    }
}

} // namespace

ExitSignals::ExitSignals(QObject *parent)
    : QObject(parent)
{
    if (::pipe(m_pipe.data()) != 0) {
        return; // without a pipe the signals end the program at once, as they would without us
    }
    for (const int end : m_pipe) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    auto *const notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char word = 0;
        while (::read(m_pipe[0], &word, 1) > 0) { }
        Q_EMIT exitRequested();
    });
    wordTo = m_pipe[1];
    handleAll(leaveWord);
}

ExitSignals::~ExitSignals()
{
    if (m_pipe[0] >= 0) {
        handleAll(SIG_DFL);
        wordTo = -1;
        ::close(m_pipe[0]);
        ::close(m_pipe[1]);
    }
}

#include "moc_ExitSignals.cpp"
