#pragma once

#include <optional>
#include <QFuture>
#include <QString>
#include <variant>

struct HttpReply;

/// The newest version there is.
struct UpdateReply {
    QString version;
    std::optional<QString> url; ///< its page

    bool operator==(const UpdateReply &) const = default;
};

/// Asks the product's server for the newest version.
namespace UpdateCheck {

/// The server has answered something that makes no sense.
struct Malformed {
    bool operator==(const Malformed &) const = default;
};

/// There was no usable answer.
struct Unavailable {
    bool operator==(const Unavailable &) const = default;
};

using UpdateOutcome = std::variant<UpdateReply, Malformed, Unavailable>;

/// What came of a question that was answered, or was not.
[[nodiscard]] UpdateOutcome outcomeOf(const std::optional<HttpReply> &reply);

/// Asks once, telling the running version, over a session of its own that ends with `owner`.
[[nodiscard]] QFuture<UpdateOutcome> fetch(
    const QString &current, const QString &site, QObject *owner);

} // namespace UpdateCheck
