#include "widget/model/chooseLanguage.h"

namespace {

/// "pt" of "pt-BR" or "PT_br"; empty when the entry has no piece.
QString languageOf(const QString &entry)
{
    QString unified = entry;
    unified.replace(u'_', u'-');
    const QStringList pieces = unified.split(u'-', Qt::SkipEmptyParts);
    return pieces.isEmpty() ? QString() : pieces.constFirst().toLower();
}

} // namespace

QString chooseLanguage(
    const QString &preference, const QStringList &offered, const QStringList &system)
{
    if (!preference.isEmpty() && offered.contains(preference)) {
        return preference;
    }
    for (const QString &entry : system) {
        if (QString code = languageOf(entry); offered.contains(code)) {
            return code;
        }
    }
    return QStringLiteral("en");
}
