#pragma once

#include <QObject>

class Strings;

/// The panel's fixed texts in the active language.
class PanelTexts final {
    Q_GADGET
    Q_PROPERTY(QString refresh MEMBER refresh)
    Q_PROPERTY(QString update MEMBER update)
    Q_PROPERTY(QString statistics MEMBER statistics)
    Q_PROPERTY(QString settings MEMBER settings)
    Q_PROPERTY(QString pin MEMBER pin)
    Q_PROPERTY(QString unpin MEMBER unpin)
    Q_PROPERTY(QString hide MEMBER hide)
    Q_PROPERTY(QString providers MEMBER providers)
    Q_PROPERTY(QString pace MEMBER pace)
    Q_PROPERTY(QString history MEMBER history)
    Q_PROPERTY(QString sessions MEMBER sessions)
    Q_PROPERTY(QString noSessions MEMBER noSessions)

public:
    QString refresh;    ///< tooltip of the refresh button
    QString update;     ///< tooltip of the update badge
    QString statistics; ///< tooltip of the statistics button
    QString settings;   ///< tooltip of the settings button
    QString pin;        ///< tooltip of the pin button while not on top
    QString unpin;      ///< the same while on top
    QString hide;       ///< tooltip of the hide button
    QString providers;  ///< what the provider switch is called for a screen reader
    QString pace;       ///< tooltip of the mark on a limit's track
    QString history;    ///< what the history's tabs and chart are called for a screen reader
    QString sessions;   ///< title of the session list
    QString noSessions; ///< in place of an empty session list

    bool operator==(const PanelTexts &) const = default;
};

/// `offered` is the version that the update badge names.
[[nodiscard]] PanelTexts panelTexts(const Strings &strings, const QString &offered);
