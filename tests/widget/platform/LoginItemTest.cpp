#include "widget/platform/LoginItem.h"

#include "TestFiles.h"
#include <QTemporaryDir>
#include <QXmlStreamReader>

namespace {

const QString plain = QStringLiteral("/opt/kestrelbay");

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A record in a folder that is not there yet, in both formats.
class Login : public testing::TestWithParam<LoginItem::Format> {
protected:
    [[nodiscard]] LoginItem item(const QString &program) const
    {
        return LoginItem(m_record, program, GetParam());
    }

    const QTemporaryDir m_folder;
    const QString m_record = m_folder.filePath(QStringLiteral("a/b/login"));
};

TEST_P(Login, readsEveryPathThatItWrites)
{
    for (const char *path :
        {"/a b/Kestrel  bay ", "/o\"q\"/'s'", "/$HOME/`id`", "/100%/%f%%", "/back\\slash\\\\\\",
            "/a\\\"b\\$c\\n\\s", "/Z\xC3\xBCrich/\xF0\x9F\x90\xA6", "/<a>&amp;\"]]>/;x=y#z"}) {
        const QString program = QString::fromUtf8(path);
        EXPECT_EQ(GetParam().programIn(GetParam().write(program)), program) << path;
    }
}

TEST_P(Login, isOnWhileTheRecordIsThere)
{
    const LoginItem login = item(plain);
    const QDir folder = QFileInfo(m_record).dir();
    for (int i = 0; i < 2; ++i) {
        login.refreshAutostart();
        EXPECT_FALSE(login.isOn()) << "what is off stays off";
        login.setAutostart(true);
        const QByteArray once = bytesOf(m_record);
        login.setAutostart(true);
        EXPECT_TRUE(login.isOn());
        EXPECT_EQ(bytesOf(m_record), once);
        EXPECT_EQ(folder.entryList(QDir::Files | QDir::Hidden).size(), 1);
        login.setAutostart(false);
    }
    EXPECT_TRUE(folder.isEmpty());

    const QString inTheWay = m_folder.filePath(QStringLiteral("file"));
    writeFile(inTheWay, "");
    const LoginItem nowhere(inTheWay % u"/login", plain, GetParam());
    nowhere.setAutostart(true);
    EXPECT_FALSE(nowhere.isOn());
}

TEST_P(Login, followsTheProgramAndLeavesAloneWhatItCannotRead)
{
    const LoginItem moved = item(QStringLiteral("/new place"));
    item(plain).setAutostart(true);
    const QByteArray whole = bytesOf(m_record);
    moved.refreshAutostart();
    EXPECT_EQ(bytesOf(m_record), GetParam().write(QStringLiteral("/new place")));

    const QByteArray broken = whole.left(whole.indexOf(plain.toUtf8()) + plain.size());
    for (const QByteArray &damaged : {QByteArray(), QByteArray("x"), broken,
             QByteArray(broken + "</string>"), QByteArray(whole).replace("\"", "")}) {
        writeFile(m_record, damaged);
        moved.refreshAutostart();
        EXPECT_EQ(bytesOf(m_record), damaged) << damaged.constData();
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, Login,
    testing::Values(LoginItem::launchAgent(), LoginItem::autostartEntry()),
    [](const auto &format) { return format.index == 0 ? "launchAgent" : "autostartEntry"; });

TEST(LaunchAgent, opensTheBundleInTheBackground)
{
    QXmlStreamReader xml(LoginItem::launchAgent().write(QStringLiteral("/A & B.app")));
    QString elements; // each with its text behind it
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement) {
            elements += u'<' % xml.name();
        } else if (xml.isCharacters() && !xml.isWhitespace()) {
            elements += u'=' % xml.text();
        }
    }
    EXPECT_FALSE(xml.hasError());
    EXPECT_EQ(elements.toStdString(),
        "<plist<dict<key=Label<string=dev.harrowgate.kestrelbay"
        "<key=ProgramArguments<array<string=/usr/bin/open<string=-g<string=/A & B.app"
        "<key=RunAtLoad<true<key=LimitLoadToSessionType<string=Aqua");
}

TEST(AutostartEntry, thatTheDesktopSwitchedOffIsNoneUntilItIsWrittenAnew)
{
    const QTemporaryDir folder;
    const QString record = folder.filePath(QStringLiteral("entry"));
    const LoginItem item(record, plain, LoginItem::autostartEntry());
    const LoginItem moved(record, QStringLiteral("/new"), LoginItem::autostartEntry());
    const QByteArray on = LoginItem::autostartEntry().write(plain);
    const std::pair<QByteArray, bool> rows[] = {{on + "Hidden=true\n", false},
        {on + "Hidden = true \r\n", false}, {"Hidden=true\n" + on + "Hidden=false\n", true},
        {QByteArray(on).replace("enabled=true", "enabled=false"), false},
        {on + "[Desktop Action x]\nExec=\"/x\"\nHidden=true\n", true}};
    for (const auto &[bytes, isOn] : rows) {
        writeFile(record, bytes);
        EXPECT_EQ(item.isOn(), isOn) << bytes.constData();
        item.refreshAutostart();
        EXPECT_EQ(bytesOf(record), bytes);
        moved.refreshAutostart();
        EXPECT_EQ(bytesOf(record) == bytes, !isOn) << bytes.constData();
        item.setAutostart(true);
        EXPECT_TRUE(item.isOn());
        EXPECT_EQ(bytesOf(record), on);
    }
}

TEST(AutostartEntry, quotesTheProgramForTheDesktop)
{
    const QByteArray record = LoginItem::autostartEntry().write(QStringLiteral("/a \"$`\\%f"));
    EXPECT_TRUE(record.startsWith("[Desktop Entry]\nType=Application\nName=Kestrelbay\n"));
    EXPECT_TRUE(record.contains("\nExec=\"/a \\\\\"\\\\$\\\\`\\\\\\\\%%f\"\n"))
        << record.constData();
}

} // namespace
