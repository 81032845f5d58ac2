#include "allocations.h"
#include "fail.h"
#include "FakeClock.h"
#include "Measure.h"
#include "pictures/Canned.h"
#include "Row.h"
#include "TenYears.h"
#include "widget/app/AppDelegate.h"
#include "widget/core/Paths.h"
#include <malloc.h>
#include <QDeadlineTimer>
#include <QLoggingCategory>

namespace {

constexpr int ticks = 1000;

/// The shell as it is in the program, but for the clock, which stands still, and the network.
class Shell final {
public:
    Shell()
    {
        m_delegate.applicationDidFinishLaunching();
        const QDeadlineTimer deadline(30'000);
        while (m_delegate.model().sessions().isEmpty() && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        }
        m_delegate.widget().showWidget();
        m_clock.advance(std::chrono::seconds(2)); // what was shown counts as moving for a second
        m_delegate.tick();
        if (m_delegate.model().sessions().isEmpty() || m_delegate.widget().isBusy()) {
            fail(QStringLiteral("the widget does not come to rest"));
        }
    }

    void tick() { m_delegate.tick(); }

private:
    FakeClock m_clock {Canned::now()};
    ReducedMotion m_systemMotion;
    Services m_services {m_clock, [](QObject *) { return QFuture<AccountUsage::AccountOutcome>(); },
        [](const QString &, QObject *) { return QFuture<UpdateCheck::UpdateOutcome>(); },
        [](std::chrono::milliseconds, const std::function<void()> &) {},
        LoginItem(Paths::launchAgent(), QString()), m_systemMotion};
    AppDelegate m_delegate {m_services};
};

} // namespace

QList<Row> tickRows()
{
    const TenYears::Home home(TenYears::Panel::Shown);
    // Without a display there is no raising of windows, and Qt says so.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    Shell shell;
    QLoggingCategory::setFilterRules(QString());
    const auto heldBefore = mallinfo2().uordblks;
    const qint64 before = allocations();
    for (int i = 0; i < ticks; ++i) {
        shell.tick();
    }
    const auto perTick = static_cast<double>(allocations() - before) / ticks;
    const auto kept = static_cast<double>(mallinfo2().uordblks) - static_cast<double>(heldBefore);
    const double time = medianTimes(ticks, {{[&shell] { shell.tick(); }}}).constFirst();
    return {{QStringLiteral("idle: allocations for a tick"), perTick, 16, QString(),
                QStringLiteral("%1 ms of processor time").arg(time, 0, 'f', 3)},
        {QStringLiteral("idle: bytes that 1,000 ticks keep"), kept, 0, QString(), {}}};
}
