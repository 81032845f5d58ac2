#include "platform/LoginItem.h"

#include <algorithm>
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

constexpr QLatin1String execKey("Exec=");

QByteArray write(const QString &program)
{
    const QString entry = QStringLiteral("[Desktop Entry]\n"
                                         "Type=Application\n"
                                         "Name=Kestrelbay\n"
                                         "Icon=dev.harrowgate.kestrelbay\n")
        % execKey % quoted(program)
        % QStringLiteral("\n"
                         "Terminal=false\n"
                         "X-GNOME-Autostart-enabled=true\n");
    return entry.toUtf8();
}

std::optional<QString> programIn(const QByteArray &record)
{
    const QStringList lines = QString::fromUtf8(record).split(u'\n');
    const auto exec =
        std::ranges::find_if(lines, [](const QString &line) { return line.startsWith(execKey); });
    return exec == lines.cend() ? std::nullopt : unquoted(exec->mid(execKey.size()));
}

} // namespace

LoginItem::Format LoginItem::autostartEntry()
{
    return {write, programIn};
}
