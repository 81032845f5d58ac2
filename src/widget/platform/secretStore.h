#pragma once

#include "widget/platform/ProcessRun.h"

/// Asks a system's store of secrets.
namespace secretStore {

/// How a system's own tool is asked: program and arguments.
struct Query {
    QString program;
    QStringList arguments;

    bool operator==(const Query &) const = default;
};

/// The keychain of macOS.
[[nodiscard]] Query keychain(const QString &service);
/// The Secret Service of Linux desktops.
[[nodiscard]] Query secretService(const QString &service);

/// The secret of the item with this service name, from this system's store; nothing when there is
/// no tool, no item or no leave.
[[nodiscard]] QFuture<std::optional<QByteArray>> lookup(
    const QString &service, const ProgramRunner &runner, QObject *owner);

} // namespace secretStore
