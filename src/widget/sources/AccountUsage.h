#pragma once

#include "formats/Limits.h"
#include <functional>
#include <QFuture>
#include <QUrl>
#include <variant>

struct HttpReply;

/// Asks the account itself how much of its limits is used.
///
/// The access token is the assistant's own. It is read anew for each poll, goes to the one endpoint
/// only, and is kept and written nowhere.
namespace AccountUsage {

/// Asked too often.
struct Throttled {
    bool operator==(const Throttled &) const = default;
};

/// The answer makes no sense.
struct Malformed {
    bool operator==(const Malformed &) const = default;
};

/// No token, no answer, or a refusal.
struct Unavailable {
    bool operator==(const Unavailable &) const = default;
};

using AccountOutcome = std::variant<Limits, Throttled, Malformed, Unavailable>;

/// What a poll needs from around it.
struct Source {
    QUrl endpoint;
    /// The credentials in the system's secret store, or nothing.
    std::function<QFuture<std::optional<QByteArray>>(QObject *owner)> keychain;
    std::function<TimePoint()> now;
};

/// One poll; it ends early with `owner`.
[[nodiscard]] QFuture<AccountOutcome> fetch(const Source &source, QObject *owner);

/// What came of a poll that was answered at `now`, or was not.
[[nodiscard]] AccountOutcome outcomeOf(const std::optional<HttpReply> &reply, TimePoint now);

/// The access token of a credentials file, if it is good for another minute.
[[nodiscard]] std::optional<QByteArray> token(const QByteArray &bytes, TimePoint now);

} // namespace AccountUsage
