#include "widget/sources/Provider.h"

QString rawValue(Provider provider)
{
    return provider == Provider::Codex ? QStringLiteral("codex") : QStringLiteral("claude");
}

QString displayName(Provider provider)
{
    return provider == Provider::Codex ? QStringLiteral("Codex") : QStringLiteral("Claude");
}
