#include "widget/text/modelName.h"

#include <QStringList>

namespace {

/// The first letter of each word in upper case, all others in lower case.
QString capitalised(const QString &words)
{
    QString result;
    bool wordBegins = true;
    for (const QChar character : words) {
        result.append(wordBegins ? character.toUpper() : character.toLower());
        wordBegins = character.isSpace() || (wordBegins && !character.isLetter());
    }
    return result;
}

} // namespace

QString modelName(const QString &id)
{
    if (id.startsWith(u"gpt-")) {
        return u"GPT-" + id.mid(4);
    }
    if (id.size() > 1 && id.front() == u'o' && id.at(1).isDigit()) {
        return id;
    }
    constexpr QStringView prefix = u"claude-";
    const QString rest = id.startsWith(prefix) ? id.mid(prefix.size()) : id;
    QStringList pieces = rest.split(u'-', Qt::SkipEmptyParts);
    if (pieces.isEmpty()) {
        return id;
    }
    const QString name = capitalised(pieces.takeFirst());
    return QString(name + u' ' + pieces.join(u'.')).trimmed();
}
