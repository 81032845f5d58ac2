#include "widget/model/PanelTexts.h"

#include "widget/text/Strings.h"

PanelTexts panelTexts(const Strings &strings, const QString &offered)
{
    const auto label = [&strings](const char *key, const char *defaultText) {
        return strings.text(QLatin1String(key), QLatin1String(defaultText));
    };
    PanelTexts texts;
    texts.refresh = label("refreshTip", "Refresh now");
    texts.update = strings.t(QStringLiteral("updateTip"), {offered});
    texts.statistics = strings.t(QStringLiteral("statsTip"));
    texts.settings = label("settingsTitle", "Settings");
    texts.pin = label("pinTip", "Keep on top");
    texts.unpin = label("unpinTip", "Stop keeping on top");
    texts.hide = strings.t(QStringLiteral("hideTip"));
    texts.providers = label("providers", "Assistant");
    texts.pace = strings.t(QStringLiteral("paceTip"));
    texts.history = label("history", "History");
    texts.sessions = strings.t(QStringLiteral("tabSessions"));
    texts.noSessions = label("noSessions", "No sessions yet");
    return texts;
}

#include "moc_PanelTexts.cpp"
