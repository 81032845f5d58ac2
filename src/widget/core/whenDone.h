#pragma once

#include <optional>
#include <QFuture>
#include <QFutureWatcher>

/// Has `take` called with the result of a future, on the owner's thread, and never once the owner
/// is gone. A future may end without a result, since it was cancelled or what worked for it has
/// thrown; then `take` is called with `none`.
template <typename Result, typename Take>
void whenDone(const QFuture<Result> &future, const Result &none, QObject *owner, Take take)
{
    auto *const watcher = new QFutureWatcher<Result>(owner);
    QObject::connect(watcher, &QFutureWatcherBase::finished, owner,
        [watcher, none, take = std::move(take)]() mutable {
            watcher->deleteLater();
            take(watcher->future().resultCount() > 0 ? watcher->result() : none);
        });
    watcher->setFuture(future);
}

/// The same where having no result is one of the results.
template <typename Value, typename Take>
void whenDone(const QFuture<std::optional<Value>> &future, QObject *owner, Take take)
{
    whenDone(future, std::optional<Value>(), owner, std::move(take));
}
