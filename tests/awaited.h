#pragma once

#include <optional>
#include <QFutureWatcher>
#include <QSignalSpy>
#include <QTest>

/// The result of a future, once it is there; nothing when it was cancelled or does not come.
template <typename Result> std::optional<Result> awaited(const QFuture<Result> &future)
{
    QFutureWatcher<Result> watcher;
    QSignalSpy ended(&watcher, &QFutureWatcherBase::finished);
    watcher.setFuture(future);
    return ended.wait(20'000) && future.resultCount() > 0 ? std::optional(future.result())
                                                          : std::nullopt;
}
