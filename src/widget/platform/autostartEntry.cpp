#include "widget/platform/LoginItem.h"

#include <QList>

namespace {

/// A program's path as one argument of an Exec key. The key is escaped twice: as an argument, where
/// quotes, backticks, dollars and backslashes mean something, and as a text of the file, where
/// backslashes do. A percent sign would begin a field code.
QString quoted(const QString &path)
{
    QString argument;
    for (const QChar c : path) {
        if (QStringLiteral("\"`$\\").contains(c)) {
            argument += u'\\';
        }
        argument += c;
        if (c == u'%') {
            argument += c;
        }
    }
    return u'"' % argument.replace(u'\\', QStringLiteral("\\\\")) % u'"';
}

std::optional<QString> unquoted(QString value)
{
    if (value.size() < 2 || !value.startsWith(u'"') || !value.endsWith(u'"')) {
        return std::nullopt;
    }
    value = value.mid(1, value.size() - 2).replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
    QString path;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool escapes = value.at(i) == u'\\' || value.at(i) == u'%';
        i += escapes && i + 1 < value.size() ? 1 : 0;
        path += value.at(i);
    }
    return path;
}

QByteArray write(const QString &program)
{
    const QString entry = QStringLiteral("[Desktop Entry]\n"
                                         "Type=Application\n"
                                         "Name=Kestrelbay\n"
                                         "Icon=dev.harrowgate.kestrelbay\n")
        % u"Exec=" % quoted(program)
        % QStringLiteral("\n"
                         "Terminal=false\n"
                         "X-GNOME-Autostart-enabled=true\n");
    return entry.toUtf8();
}

/// The value of a key of the entry itself, not of another group, such as an action. Of several the
/// last counts.
std::optional<QString> valueOf(QStringView key, const QByteArray &record)
{
    const QString text = QString::fromUtf8(record);
    std::optional<QString> value;
    bool inEntry = false;
    for (const QStringView part : QStringView(text).split(u'\n')) {
        const QStringView line = part.trimmed();
        if (line.startsWith(u'[')) {
            inEntry = line == u"[Desktop Entry]";
        }
        const qsizetype equals = line.indexOf(u'=');
        if (inEntry && equals >= 0 && line.first(equals).trimmed() == key) {
            value = line.sliced(equals + 1).trimmed().toString();
        }
    }
    return value;
}

std::optional<QString> programIn(const QByteArray &record)
{
    const std::optional<QString> value = valueOf(u"Exec", record);
    return value ? unquoted(*value) : std::nullopt;
}

/// Desktops hide an entry that the user has switched off, or mark it.
bool isOff(const QByteArray &record)
{
    return valueOf(u"Hidden", record) == QLatin1String("true")
        || valueOf(u"X-GNOME-Autostart-enabled", record) == QLatin1String("false");
}

} // namespace

LoginItem::Format LoginItem::autostartEntry()
{
    return {write, programIn, isOff};
}
