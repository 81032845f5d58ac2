#include "widget/text/Strings.h"

Strings::Strings(const QString &code, const TranslationTable &all)
    : m_code(code)
    , m_table(all.value(code))
    , m_fallback(all.value(QStringLiteral("en")))
    , m_culture(text(QStringLiteral("culture"), QStringLiteral("en-US")))
    , m_clock(QStringLiteral("en_US_POSIX"), QStringLiteral("HH:mm"))
{
}

QString Strings::t(const QString &key, const QStringList &arguments) const
{
    QString filled = text(key, key);
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString placeholder = u'{' + QString::number(i) + u'}';
        filled.replace(placeholder, arguments.at(i));
    }
    return filled;
}

QString Strings::text(const QString &key, const QString &defaultText) const
{
    for (const Texts *texts : {&m_table, &m_fallback}) {
        if (const auto entry = texts->constFind(key); entry != texts->cend()) {
            return *entry;
        }
    }
    return defaultText;
}
