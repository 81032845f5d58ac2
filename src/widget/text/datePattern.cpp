#include "widget/text/datePattern.h"

namespace {

bool isFieldLetter(QChar sign)
{
    return (sign >= u'a' && sign <= u'z') || (sign >= u'A' && sign <= u'Z');
}

void addText(QList<DatePart> &parts, QChar sign)
{
    if (parts.isEmpty() || parts.constLast().letter != 0) {
        parts.append(DatePart());
    }
    parts.last().text += sign;
}

void addLetter(QList<DatePart> &parts, QChar letter)
{
    if (parts.isEmpty() || parts.constLast().letter != letter.unicode()) {
        parts.append(DatePart {.letter = letter.unicode()});
    }
    ++parts.last().count;
}

} // namespace

QList<DatePart> datePattern(const QString &pattern)
{
    constexpr QChar quote = u'\'';
    QList<DatePart> parts;
    bool quoted = false;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar sign = pattern.at(i);
        if (sign == quote && i + 1 < pattern.size() && pattern.at(i + 1) == quote) {
            addText(parts, quote);
            ++i;
        } else if (sign == quote) {
            quoted = !quoted;
        } else if (!quoted && isFieldLetter(sign)) {
            addLetter(parts, sign);
        } else {
            addText(parts, sign);
        }
    }
    return parts;
}
