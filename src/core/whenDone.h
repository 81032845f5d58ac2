#pragma once

#include <QFuture>
#include <QFutureWatcher>

/// Has `take` called with the result of a future, on the owner's thread, and never once the owner
/// is gone. A future that is cancelled has no result, and nothing is called.
template <typename Result, typename Take>
void whenDone(const QFuture<Result> &future, QObject *owner, Take take)
{
    auto *const watcher = new QFutureWatcher<Result>(owner);
    QObject::connect(
        watcher, &QFutureWatcherBase::finished, owner, [watcher, take = std::move(take)]() mutable {
            watcher->deleteLater();
            if (watcher->future().resultCount() > 0) {
                take(watcher->result());
            }
        });
    watcher->setFuture(future);
}
