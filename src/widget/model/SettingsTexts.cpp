#include "widget/model/SettingsTexts.h"

#include "widget/text/Strings.h"
#include <algorithm>

namespace {

/// A text's key and its English text, for a table that lacks it; none for what every table has.
struct Text {
    QLatin1String key;
    const char16_t *english = u"";
};

constexpr Text known[] = {
    {QLatin1String("menuLanguage")},
    {QLatin1String("menuView")},
    {QLatin1String("settingsAnimations"), u"Animations"},
    {QLatin1String("settingsCard"), u"Card"},
    {QLatin1String("settingsData"), u"Data"},
    {QLatin1String("settingsGeneral"), u"General"},
    {QLatin1String("settingsLaunch"), u"Launch"},
    {QLatin1String("settingsTitle"), u"Settings"},
    {QLatin1String("syncAbout"),
        u"Spend and token counts per day, model and session go to "
        "kestrelbay.harrowgate.dev, so the history survives a wiped or new computer and shows "
        "linked devices. Session titles and project names stay here."},
    {QLatin1String("syncCancel"), u"Cancel"},
    {QLatin1String("syncChange"), u"Change"},
    {QLatin1String("syncCopied"), u"Copied"},
    {QLatin1String("syncCopy"), u"Copy"},
    {QLatin1String("syncDelete"), u"Delete history…"},
    {QLatin1String("syncDeleteAbout"),
        u"Deletes this device’s history here and on the server. Linked devices keep theirs."},
    {QLatin1String("syncDeleteConfirm"), u"Delete"},
    {QLatin1String("syncDeleteMessage"),
        u"Spend and tokens of this device are deleted here and on the server. Transcripts "
        "already on disk are not counted again. This cannot be undone."},
    {QLatin1String("syncDeleteTitle"), u"Delete the history?"},
    {QLatin1String("syncDeviceId"), u"Device ID"},
    {QLatin1String("syncLink"), u"Link"},
    {QLatin1String("syncLinked"), u"Linked devices"},
    {QLatin1String("syncLinkedAbout"),
        u"Linked devices see each other’s history. Untick one to leave it out of the totals "
        "without unlinking it."},
    {QLatin1String("syncName"), u"Name"},
    {QLatin1String("syncNewPassword"), u"New password"},
    {QLatin1String("syncNow"), u"Sync now"},
    {QLatin1String("syncOff"), u"Don’t sync with the server"},
    {QLatin1String("syncPassword"), u"Password"},
    {QLatin1String("syncPasswordAbout"),
        u"Another device links to this one with its ID and password. Keep the ID: after a "
        "reinstall, link the old ID to bring its history back."},
    {QLatin1String("syncPasswordPrompt"), u"6 characters or more"},
    {QLatin1String("syncPasswordSet"), u"set"},
    {QLatin1String("syncRemove"), u"Remove"},
    {QLatin1String("syncSave"), u"Save"},
    {QLatin1String("syncServer"), u"Server"},
    {QLatin1String("syncSet"), u"Set"},
    {QLatin1String("syncThisDevice"), u"This device"},
    {QLatin1String("syncUnlink"), u"Unlink"},
};

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
    const auto *const text = std::ranges::find(known, key, &Text::key);
    Q_ASSERT_X(text != std::end(known), "SettingsTexts", qUtf8Printable(key));
    const QString english = QString::fromUtf16(text->english);
    return english.isEmpty() ? m_strings->t(key) : m_strings->text(key, english);
}

#include "moc_SettingsTexts.cpp"
