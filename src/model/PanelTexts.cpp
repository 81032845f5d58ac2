#include "model/PanelTexts.h"

#include "text/Strings.h"

PanelTexts panelTexts(const Strings &strings)
{
    const auto label = [&strings](const char *key, const char *defaultText) {
        return strings.text(QLatin1String(key), QLatin1String(defaultText));
    };
    PanelTexts texts;
    texts.refresh = label("refreshTip", "Refresh now");
    texts.statistics = strings.t(QStringLiteral("statsTip"));
    texts.providers = label("providers", "Assistant");
    texts.sessions = strings.t(QStringLiteral("tabSessions"));
    texts.noSessions = label("noSessions", "No sessions yet");
    return texts;
}

#include "moc_PanelTexts.cpp"
