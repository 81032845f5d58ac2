#include "model/SettingsTexts.h"

#include "model/autostartTitle.h"
#include "text/Strings.h"
#include <QHash>

namespace {

/// The English texts, for a table that lacks them. Those without one are in every table.
const QHash<QString, QString> &defaults()
{
    static const QHash<QString, QString> texts {
        {u"menuLanguage"_qs, {}},
        {u"menuStatusLine"_qs, u"Status line in Claude Code"_qs},
        {u"menuTopmost"_qs, {}},
        {u"menuUpdates"_qs, {}},
        {u"menuView"_qs, {}},
        {u"menuWithClaude"_qs, {}},
        {u"menuWithCodex"_qs, u"Open with Codex"_qs},
        {u"settingsAnimations"_qs, u"Animations"_qs},
        {u"settingsCard"_qs, u"Card"_qs},
        {u"settingsData"_qs, u"Data"_qs},
        {u"settingsGeneral"_qs, u"General"_qs},
        {u"settingsLaunch"_qs, u"Launch"_qs},
        {u"settingsTitle"_qs, u"Settings"_qs},
        {u"syncAbout"_qs,
            u"Spend and token counts per day, model and session go to the sync server, so the "
            "history survives a wiped or new computer and shows linked devices. Session titles and "
            "project names stay here."_qs},
        {u"syncCancel"_qs, u"Cancel"_qs},
        {u"syncChange"_qs, u"Change"_qs},
        {u"syncCopied"_qs, u"Copied"_qs},
        {u"syncCopy"_qs, u"Copy"_qs},
        {u"syncDelete"_qs, u"Delete history…"_qs},
        {u"syncDeleteAbout"_qs,
            u"Deletes this device’s history here and on the server. Linked devices keep theirs."_qs},
        {u"syncDeleteConfirm"_qs, u"Delete"_qs},
        {u"syncDeleteMessage"_qs,
            u"Spend and tokens of this device are deleted here and on the server. Transcripts "
            "already on disk are not counted again. This cannot be undone."_qs},
        {u"syncDeleteTitle"_qs, u"Delete the history?"_qs},
        {u"syncDeviceId"_qs, u"Device ID"_qs},
        {u"syncLink"_qs, u"Link"_qs},
        {u"syncLinked"_qs, u"Linked devices"_qs},
        {u"syncLinkedAbout"_qs,
            u"Linked devices see each other’s history. Untick one to leave it out of the totals "
            "without unlinking it."_qs},
        {u"syncName"_qs, u"Name"_qs},
        {u"syncNewPassword"_qs, u"New password"_qs},
        {u"syncNow"_qs, u"Sync now"_qs},
        {u"syncOff"_qs, u"Don’t sync with the server"_qs},
        {u"syncPassword"_qs, u"Password"_qs},
        {u"syncPasswordAbout"_qs,
            u"Another device links to this one with its ID and password. Keep the ID: after a "
            "reinstall, link the old ID to bring its history back."_qs},
        {u"syncPasswordPrompt"_qs, u"6 characters or more"_qs},
        {u"syncPasswordSet"_qs, u"set"_qs},
        {u"syncRemove"_qs, u"Remove"_qs},
        {u"syncSave"_qs, u"Save"_qs},
        {u"syncServer"_qs, u"Server"_qs},
        {u"syncSet"_qs, u"Set"_qs},
        {u"syncThisDevice"_qs, u"This device"_qs},
        {u"syncUnlink"_qs, u"Unlink"_qs},
    };
    return texts;
}

} // namespace

SettingsTexts::SettingsTexts(std::shared_ptr<const Strings> strings)
    : m_strings(std::move(strings))
{
}

QString SettingsTexts::label(const QString &key) const
{
    if (m_strings == nullptr) {
        return {};
    }
    if (key == u"menuWithWindows") {
        return autostartTitle(*m_strings);
    }
    const auto found = defaults().constFind(key);
    Q_ASSERT_X(found != defaults().cend(), "SettingsTexts", qUtf8Printable(key));
    return found->isEmpty() ? m_strings->t(key) : m_strings->text(key, *found);
}

#include "moc_SettingsTexts.cpp"
