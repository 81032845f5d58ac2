#include "widget/scripts/SyncSettings.h"

#include "widget/scripts/DataFolder.h"
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

using namespace std::placeholders;

namespace {

const QString id = QStringLiteral("WXYZ-WXYZ-WXYZ");
const QString secret = QStringLiteral("päss word");

QString inData(const char *name)
{
    return QDir(Paths::dir()).filePath(QLatin1String(name));
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The stand-in for the sync script in an empty data folder, run by the real node.
class Sync : public DataFolder {
protected:
    void SetUp() override
    {
        DataFolder::SetUp();
        const QString node = QStandardPaths::findExecutable(QStringLiteral("node"));
        for (const char *profile : {"/.profile", "/.zprofile"}) {
            writeFile(Paths::home() % QLatin1String(profile),
                "PATH=\"" + QFileInfo(node).path().toUtf8()
                    + ":/usr/bin:/bin\"\n"
                      "echo '{\"error\": \"profile\"}'\n");
        }
        writeFile(Paths::sync(), bytesOf(QStringLiteral(SYNC_STANDIN)));
    }

    /// Fills the fields, runs a command to its end and gives what the stand-in was told.
    template <typename Command> QByteArray call(Command command)
    {
        QFile::remove(inData("standin-calls"));
        m_sync.enterName(u" \t Büro; `exit` $HOME\n"_qs);
        m_sync.enterPassword(secret);
        m_sync.enterLinkId(u"\n "_qs % id % u' ');
        m_sync.enterLinkPassword(secret);
        command();
        EXPECT_TRUE(ended(m_sync));
        return bytesOf(inData("standin-calls"));
    }
    static bool ended(const SyncSettings &sync)
    {
        return QTest::qWaitFor([&sync] { return !sync.busy(); }, 20'000);
    }

    SyncSettings m_sync {m_model};
};

TEST_F(Sync, commandsTellTheScriptWhatTheFieldsHold)
{
    enum Clears { Nothing, Password, Link };
    enum Changes { None, History };
    using S = SyncSettings;
    const std::tuple<std::function<void(S *)>, const char *, const char *, Clears, Changes> rows[] =
        {{std::bind(&S::setSyncing, _1, false), "off", "", Nothing, History},
            {std::bind(&S::setSyncing, _1, true), "on", "", Nothing, History},
            {&S::rename, "rename|Büro; `exit` $HOME", "", Nothing, None},
            {&S::setPassword, "password", "päss word", Password, None},
            {&S::removePassword, "password", "", Nothing, None},
            {&S::link, "link|WXYZ-WXYZ-WXYZ", "päss word", Link, History},
            {std::bind(&S::include, _1, u"A"_qs, false), "include|A|off", "", Nothing, History},
            {std::bind(&S::include, _1, u"A"_qs, true), "include|A|on", "", Nothing, History},
            {std::bind(&S::unlink, _1, u"A"_qs), "unlink|A", "", Nothing, History},
            {&S::deleteHistory, "delete-history", "", Nothing, History},
            {&S::syncNow, "--now|sync", "", Nothing, History}};
    for (const auto &[command, arguments, input, clears, changes] : rows) {
        const testing::ScopedTrace row(__FILE__, __LINE__, arguments);
        const QSignalSpy changed(&m_sync, &S::syncChanged);
        EXPECT_EQ(call([this, &command = command] { command(&m_sync); }),
            QByteArray(arguments) + '<' + input + '\n');
        EXPECT_EQ(m_sync.problem(), std::nullopt);
        EXPECT_NE(m_sync.name().endsWith(u'\n'),
            QByteArray(arguments).startsWith("rename")); // what is typed stays until used
        EXPECT_EQ(m_sync.password().isEmpty(), clears == Password);
        EXPECT_EQ(m_sync.linkId().isEmpty(), clears == Link);
        EXPECT_EQ(m_sync.linkPassword().isEmpty(), clears == Link);
        EXPECT_EQ(changed.size(), changes == History ? 1 : 0);
        EXPECT_EQ(m_sync.status(), SyncStatus::parse(bytesOf(Paths::syncStatus())));
        EXPECT_EQ(m_sync.syncing(), qstrcmp(arguments, "off") != 0);
    }
}

TEST_F(Sync, failuresAreToldAndLeaveTheFields)
{
    const QSignalSpy changed(&m_sync, &SyncSettings::syncChanged);
    const std::pair<const char *, const char *> rows[] = {{R"({"error": "offline"})", "offline"},
        {R"({"error": "new", "status": 1})", "new"}, {R"({"output": ""})", "exit_0"},
        {R"({"output": "oops", "status": 3})", "exit_3"}, {R"({"signal": "SIGKILL"})", "exit_9"},
        {R"({"status": 127})", "no_node"}};
    for (const auto &[order, code] : rows) {
        writeFile(inData("standin.json"), order);
        call(std::bind(&SyncSettings::link, &m_sync));
        EXPECT_EQ(m_sync.problem(), m_sync.message(QLatin1String(code))) << order;
        EXPECT_TRUE(m_sync.linkId().trimmed() == id && m_sync.linkPassword() == secret) << order;
    }
    EXPECT_EQ(changed.size(), 0);
    EXPECT_EQ(m_sync.status().error, QStringLiteral("new")); // what says nothing changes nothing
    EXPECT_EQ(logged(), QByteArray());
    QFile::remove(Paths::sync());
    m_sync.syncNow();
    EXPECT_FALSE(m_sync.busy());
    EXPECT_EQ(m_sync.problem(), m_sync.message(u"no_node"_qs));
}

TEST_F(Sync, passesOnWhateverIsTyped)
{
    for (const QString &typed : {u"a b"_qs, u"\"'`\\"_qs, u"one\ntwo"_qs, u"\U0001F511 ключ"_qs,
             QString(10'000, u'x'), u"--now"_qs, u"$(false); exit"_qs}) {
        const QByteArray told = call([&] {
            m_sync.enterLinkId(typed);
            m_sync.enterLinkPassword(typed);
            m_sync.link();
        });
        EXPECT_EQ(told, "link|" + typed.toUtf8() + '<' + typed.toUtf8() + '\n');
        EXPECT_EQ(m_sync.problem(), m_sync.message(u"bad_id"_qs));
        EXPECT_TRUE(m_sync.linkId() == typed && m_sync.linkPassword() == typed);
    }
    m_sync.enterName(u"typed"_qs);
    m_sync.forgetEntries();
    EXPECT_TRUE(m_sync.linkId().isEmpty() && m_sync.linkPassword().isEmpty());
    EXPECT_EQ(m_sync.name(), m_sync.status().name.value_or(QString()));
    EXPECT_EQ(m_sync.problem(), std::nullopt);
}

TEST_F(Sync, runsOneCommandAndShowsNobodyItsPassword)
{
    writeFile(inData("standin.json"), R"({"hold": true})");
    const QByteArray told = call([this] {
        m_sync.link();
        EXPECT_TRUE(QTest::qWaitFor([] { return QFile::exists(inData("standin-calls")); }, 20'000));
        m_sync.deleteHistory();
        int scripts = 0;
        for (const QString &process : QDir(u"/proc"_qs).entryList({u"[1-9]*"_qs}, QDir::Dirs)) {
            const QByteArray line = bytesOf(u"/proc/%1/cmdline"_qs.arg(process));
            const QByteArray environment = bytesOf(u"/proc/%1/environ"_qs.arg(process));
            EXPECT_FALSE(QByteArray(line + environment).contains(secret.toUtf8()))
                << line.constData();
            scripts += line.contains(Paths::sync().toUtf8()) && !environment.isEmpty() ? 1 : 0;
        }
        EXPECT_EQ(scripts, 1);
        EXPECT_TRUE(m_sync.busy());
        QFile::remove(inData("standin.json"));
    });
    EXPECT_EQ(told.count('\n'), 1);
}

TEST_F(Sync, endsAScriptThatHangs)
{
    writeFile(inData("standin.json"), R"({"hold": true})");
    SyncSettings hasty(m_model, nullptr, std::chrono::milliseconds(300));
    hasty.syncNow();
    EXPECT_TRUE(ended(hasty));
    EXPECT_EQ(hasty.problem(), hasty.message(u"exit_9"_qs));
}

TEST_F(Sync, takesTheFileAndTheStatisticsAsTheyCome)
{
    m_sync.load();
    EXPECT_TRUE(m_sync.syncing());
    for (const char *text : {"\xEF\xBB\xBF{\"name\": \"Büro\", \"enabled\": false}", "[]"}) {
        writeFile(Paths::syncStatus(), text);
        m_sync.load();
        EXPECT_EQ(m_sync.name(), QStringLiteral("Büro"));
        EXPECT_FALSE(m_sync.syncing());
    }
    m_sync.apply({});
    EXPECT_EQ(m_sync.name(), QString());

    const QSignalSpy changed(&m_sync, &SyncSettings::deviceCostsChanged);
    EXPECT_TRUE(m_sync.deviceCosts().isEmpty());
    const QList<DeviceRow> devices {{.id = id, .cost = 5}, {.id = u"A"_qs}};
    m_model.loadStats({.stats = {.devices = devices}, .sessions = {}});
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(m_sync.deviceCosts(), devices);
}

TEST_F(Sync, saysEachErrorInTheUsersLanguage)
{
    for (const auto &[code, key, english] : std::initializer_list<std::array<const char *, 3>> {
             {"offline", "syncOffline", "The server cannot be reached. Try again later."},
             {"wrong_id_or_password", "syncWrong", "No device with this ID and password."},
             {"too_many", "syncTooMany", "Too many attempts. Try again in a few minutes."},
             {"bad_password", "syncBadPassword", "The password needs 6 to 128 characters."},
             {"bad_id", "syncBadId", "A device ID looks like ABCD-EFGH-JKMN."},
             {"self", "syncSelf", "That is this device’s own ID."},
             {"sync_off", "syncIsOff", "Sync is off."}, {"no_node", "needNode", "needNode"},
             {"exit_2", "syncFailed", "Something went wrong. (exit_2)"}}) {
        EXPECT_EQ(m_sync.message(QLatin1String(code)), QString::fromUtf8(english));
        writeFile(Paths::i18n(), "{\"en\": {\"" + QByteArray(key) + "\": \"Ach\"}}");
        WidgetModel model(m_clock, [] { return QStringList(); });
        EXPECT_TRUE(SyncSettings(model).message(QLatin1String(code)).startsWith(u"Ach")) << code;
    }
    QFile::remove(Paths::i18n());
}

} // namespace
