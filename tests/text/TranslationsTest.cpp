#include "text/Strings.h"

#include "core/dataFolder.h"
#include "core/Paths.h"
#include <gtest/gtest.h>
#include <QFile>
#include <QRegularExpression>

namespace {

/// Keys without a text in the program, by how many arguments they take.
const struct {
    int arguments;
    const char *keys;
} translatedOnly[] = {
    {0,
        "langName culture now tabDays tabWeeks tabMonths tabSessions statsTip hideTip "
        "trayEmpty windowReset exhausted noData paceTip fiveHours week monthShort "
        "monthLong dayShort dayLong thisMonth lastMonth today yesterday thisWeek lastWeek "
        "collecting needNode weekdayTime dayTime tokShort menuHide menuShow menuStats "
        "menuTopmost menuView menuViewIcon menuViewWindow menuUpdates menuWithWindows "
        "menuWithClaude menuLanguage menuSystem menuExit"},
    {1,
        "minAgo hAgo dAgo dotTip updateTip runout weekOf tokens atTime spanM menuUpdate "
        "menuVersion"},
    {2, "resetIn spanDH spanHM"},
    {3, "periodNote"},
};

/// Keys whose English text the program carries too.
const struct {
    const char *key;
    const char *text;
} withDefault[] = {
    {"refreshTip", "Refresh now"},
    {"settingsTitle", "Settings"},
    {"pinTip", "Keep on top"},
    {"unpinTip", "Stop keeping on top"},
    {"menuAnimOff", "Disable animations"},
    {"menuAnimOn", "Enable animations"},
    {"menuWithCodex", "Open with Codex"},
    {"menuStatusLine", "Status line in Claude Code"},
    {"menuSettings", "Settings…"},
    {"menuNotch", "Notch view"},
    {"settingsGeneral", "General"},
    {"settingsData", "Data"},
    {"settingsLaunch", "Launch"},
    {"settingsCard", "Card"},
    {"settingsAnimations", "Animations"},
    {"syncAbout",
        "Spend and token counts per day, model and session go to kestrelbay.harrowgate.dev, so the "
        "history survives a wiped or new computer and shows linked devices. Session titles and "
        "project names stay here."},
    {"syncThisDevice", "This device"},
    {"syncDeviceId", "Device ID"},
    {"syncCopy", "Copy"},
    {"syncName", "Name"},
    {"syncSave", "Save"},
    {"syncPassword", "Password"},
    {"syncPasswordSet", "set"},
    {"syncNewPassword", "New password"},
    {"syncPasswordPrompt", "6 characters or more"},
    {"syncPasswordAbout",
        "Another device links to this one with its ID and password. Keep the ID: after a "
        "reinstall, link the old ID to bring its history back."},
    {"syncChange", "Change"},
    {"syncSet", "Set"},
    {"syncRemove", "Remove"},
    {"syncLink", "Link"},
    {"syncUnlink", "Unlink"},
    {"syncLinked", "Linked devices"},
    {"syncLinkedAbout",
        "Linked devices see each other’s history. Untick one to leave it out of the totals without "
        "unlinking it."},
    {"syncOff", "Don’t sync with the server"},
    {"syncOffNote", "Nothing leaves this computer."},
    {"syncNow", "Sync now"},
    {"syncAt", "Synced {0}"},
    {"syncNever", "Not synced yet"},
    {"syncDelete", "Delete history…"},
    {"syncDeleteAbout",
        "Deletes this device’s history here and on the server. Linked devices keep theirs."},
    {"syncDeleteTitle", "Delete the history?"},
    {"syncDeleteMessage",
        "Spend and tokens of this device are deleted here and on the server. Transcripts already "
        "on disk are not counted again. This cannot be undone."},
    {"syncDeleteConfirm", "Delete"},
    {"syncCancel", "Cancel"},
    {"syncIsOff", "Sync is off."},
    {"syncSelf", "That is this device’s own ID."},
    {"syncBadId", "A device ID looks like ABCD-EFGH-JKMN."},
    {"syncBadPassword", "The password needs 6 to 128 characters."},
    {"syncTooMany", "Too many attempts. Try again in a few minutes."},
    {"syncWrong", "No device with this ID and password."},
    {"syncOffline", "The server cannot be reached. Try again later."},
    {"syncFailed", "Something went wrong."},
    {"noSessions", "No sessions yet"},
    {"collectFailed", "Statistics could not be collected. The file widget.log tells more."},
    {"providers", "Assistant"},
    {"statsUnreadable",
        "The statistics cannot be read. They will be shown again after the next run."},
    {"sessionYesterday", "yesterday {0}"},
    {"sessionToday", "today {0}"},
    {"syncServer", "Server"},
    {"syncSeen", "seen {0}"},
};

/// The texts that are delivered beside the program, read as the program reads them.
class Translations : public testing::Test {
protected:
    Translations()
    {
        QFile::remove(Paths::i18n());
        EXPECT_TRUE(makeDataFolder());
        EXPECT_TRUE(QFile::copy(QStringLiteral(SHIPPED_TRANSLATIONS), Paths::i18n()));
        m_table = I18n::load();
    }

    const TranslationTable &table() const { return m_table; }

private:
    TranslationTable m_table;
};

/// The placeholders of a text, sorted and each as often as it stands there.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression braces(u"\\{[^}]*\\}?|\\}"_qs);
    QStringList found;
    for (auto match = braces.globalMatch(text); match.hasNext();) {
        found.append(match.next().captured());
    }
    found.sort();
    return found;
}

/// Every key that the program looks up, with the placeholders its texts must have.
QHash<QString, QStringList> vocabulary()
{
    QHash<QString, QStringList> keys;
    for (const auto &group : translatedOnly) {
        const QStringList wanted =
            QStringList {u"{0}"_qs, u"{1}"_qs, u"{2}"_qs}.mid(0, group.arguments);
        for (const QString &key : QString::fromLatin1(group.keys).split(u' ')) {
            keys.insert(key, wanted);
        }
    }
    for (const auto &entry : withDefault) {
        keys.insert(QString::fromLatin1(entry.key), placeholders(QString::fromUtf8(entry.text)));
    }
    return keys;
}

TEST_F(Translations, offerThreeLanguages)
{
    EXPECT_EQ(I18n::codes(table()), (QStringList {u"en"_qs, u"ru"_qs, u"de"_qs}));
}

TEST_F(Translations, haveExactlyTheVocabularyInEveryLanguage)
{
    const QHash<QString, QStringList> wanted = vocabulary();
    for (auto language = table().cbegin(); language != table().cend(); ++language) {
        QHash<QString, QStringList> found;
        for (auto entry = language->cbegin(); entry != language->cend(); ++entry) {
            found.insert(entry.key(), placeholders(*entry));
            EXPECT_FALSE(entry->isEmpty()) << entry.key().toStdString();
            EXPECT_EQ(*entry, entry->trimmed()) << entry.key().toStdString();
        }
        for (auto key = wanted.cbegin(); key != wanted.cend(); ++key) {
            EXPECT_EQ(found.value(key.key(), {u"missing"_qs}), *key)
                << language.key().toStdString() << ' ' << key.key().toStdString();
        }
        // Nor any other, such as a misspelt one.
        EXPECT_EQ(found.size(), wanted.size()) << language.key().toStdString();
    }
}

TEST_F(Translations, sayInEnglishWhatTheProgramSaysWithoutThem)
{
    const Strings english(u"en"_qs, table());
    for (const auto &entry : withDefault) {
        EXPECT_EQ(english.t(QString::fromLatin1(entry.key)).toStdString(), entry.text);
    }
}

TEST_F(Translations, writeDatesAsEachLanguageDoes)
{
    // Friday, 14 November 2025, 10:20 in Berlin.
    const TimePoint moment {std::chrono::milliseconds(1'763'112'000'000)};
    const struct {
        const char *key;
        MonthForm month;
        const char *english;
        const char *russian;
        const char *german;
    } rows[] = {
        {"monthShort", MonthForm::StandAlone, "Nov", "нояб", "Nov"},
        {"monthLong", MonthForm::StandAlone, "November 2025", "ноябрь 2025", "November 2025"},
        {"dayShort", MonthForm::InPhrase, "14", "14", "14."},
        {"dayLong", MonthForm::InPhrase, "Friday, 14 November", "пятница, 14 ноября",
            "Freitag, 14. November"},
        {"weekdayTime", MonthForm::InPhrase, "Fri 10:20", "пт 10:20", "Fr 10:20"},
        {"dayTime", MonthForm::InPhrase, "14 Nov 10:20", "14 нояб 10:20", "14. Nov 10:20"},
    };
    const auto written = [&](const char *code, const auto &row) {
        const Strings strings(QString::fromLatin1(code), table());
        QString text = strings.date(moment, QString::fromLatin1(row.key), row.month);
        return text.replace(QChar::Nbsp, u' ').toStdString();
    };
    for (const auto &row : rows) {
        EXPECT_EQ(written("en", row), row.english);
        EXPECT_EQ(written("ru", row), row.russian);
        EXPECT_EQ(written("de", row), row.german);
    }
}

TEST_F(Translations, readWellTogether)
{
    const TimePoint now {std::chrono::milliseconds(1'763'112'000'000)};
    const auto note = [&](const char *code, std::chrono::minutes left) {
        const Strings strings(QString::fromLatin1(code), table());
        QString text =
            strings.t(u"resetIn"_qs, {strings.when(now + left, now), strings.span(left)});
        return text.replace(QChar::Nbsp, u' ').toStdString();
    };
    using namespace std::chrono_literals;
    EXPECT_EQ(note("en", 161min), "resets at 13:01 · 2h 41m left");
    EXPECT_EQ(note("en", 80h), "resets Mon 18:20 · 3d 8h left");
    EXPECT_EQ(note("ru", 161min), "сброс в 13:01 · ещё 2 ч 41 мин");
    EXPECT_EQ(note("ru", 80h), "сброс пн 18:20 · ещё 3 д 8 ч");
    EXPECT_EQ(note("de", 161min), "Reset um 13:01 · noch 2 h 41 min");
    EXPECT_EQ(note("de", 80h), "Reset Mo 18:20 · noch 3 d 8 h");
}

} // namespace
