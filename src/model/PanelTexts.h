#pragma once

#include <QObject>

class Strings;

/// The panel's fixed texts in the active language.
class PanelTexts final {
    Q_GADGET
    Q_PROPERTY(QString refresh MEMBER refresh)
    Q_PROPERTY(QString statistics MEMBER statistics)
    Q_PROPERTY(QString providers MEMBER providers)
    Q_PROPERTY(QString sessions MEMBER sessions)
    Q_PROPERTY(QString noSessions MEMBER noSessions)

public:
    QString refresh;    ///< tooltip of the refresh button
    QString statistics; ///< tooltip of the statistics button
    QString providers;  ///< what the provider switch is called for a screen reader
    QString sessions;   ///< title of the session list
    QString noSessions; ///< in place of an empty session list

    bool operator==(const PanelTexts &) const = default;
};

[[nodiscard]] PanelTexts panelTexts(const Strings &strings);
