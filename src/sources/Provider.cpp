#include "sources/Provider.h"

QString rawValue(Provider provider)
{
    return provider == Provider::Codex ? QStringLiteral("codex") : QStringLiteral("claude");
}

QString displayName(Provider provider)
{
    return provider == Provider::Codex ? QStringLiteral("Codex") : QStringLiteral("Claude");
}

std::optional<Provider> providerNamed(QStringView raw)
{
    for (const Provider provider : {Provider::Claude, Provider::Codex}) {
        if (raw == rawValue(provider)) {
            return provider;
        }
    }
    return std::nullopt;
}
