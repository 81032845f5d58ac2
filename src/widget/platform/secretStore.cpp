#include "widget/platform/secretStore.h"

namespace {

secretStore::Query thisSystems(const QString &service)
{
#ifdef Q_OS_MACOS
    return secretStore::keychain(service);
#else
    return secretStore::secretService(service);
#endif
}

} // namespace

namespace secretStore {

Query keychain(const QString &service)
{
    return {QStringLiteral("/usr/bin/security"),
        {QStringLiteral("find-generic-password"), QStringLiteral("-s"), service,
            QStringLiteral("-w")}};
}

Query secretService(const QString &service)
{
    return {QStringLiteral("secret-tool"),
        {QStringLiteral("lookup"), QStringLiteral("service"), service}};
}

QFuture<std::optional<QByteArray>> lookup(
    const QString &service, const ProgramRunner &runner, QObject *owner)
{
    const Query query = thisSystems(service);
    return runner(query.program, query.arguments, owner)
        .then([](const std::optional<ProcessResult> &result) {
            return result && result->status == 0 ? std::optional(result->output) : std::nullopt;
        });
}

} // namespace secretStore
