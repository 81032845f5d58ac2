#include "widget/sources/AppVersion.h"

#include <algorithm>
#include <QList>

namespace {

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// The numbers of a version; nothing when it is not made of numbers and dots alone.
std::optional<QList<qulonglong>> components(const QString &version)
{
    QList<qulonglong> numbers;
    const QString trimmed = version.trimmed();
    for (const QStringView piece : QStringView(trimmed).split(u'.')) {
        bool fits = false;
        const qulonglong number = piece.toULongLong(&fits);
        if (!fits || !std::ranges::all_of(piece, isDigit)) {
            return std::nullopt;
        }
        numbers.append(number);
    }
    return numbers;
}

/// A language code that can stand in an address as it is.
bool isPlainCode(const QString &language)
{
    return !language.isEmpty()
        && std::ranges::all_of(language, [](QChar c) { return c.unicode() < 128 && c.isLetter(); });
}

} // namespace

namespace AppVersion {

const QString &site()
{
    static const QString address = QStringLiteral(KESTRELBAY_SITE);
    return address;
}

const std::optional<QString> &current()
{
    static const std::optional<QString> version = QStringLiteral(KESTRELBAY_VERSION);
    return version;
}

bool isNewer(const QString &candidate, const QString &base)
{
    const auto ours = components(base);
    const auto theirs = components(candidate);
    if (!ours || !theirs) {
        return false;
    }
    for (qsizetype i = 0; i < std::max(ours->size(), theirs->size()); ++i) {
        const qulonglong a = theirs->value(i, 0);
        const qulonglong b = ours->value(i, 0);
        if (a != b) {
            return a > b;
        }
    }
    return false;
}

QUrl pageURL(const std::optional<QString> &link, const QString &language)
{
    QString address = link && link->startsWith(site()) ? *link : site();
    if (language != u"en" && isPlainCode(language)) {
        // One slash between the two, whether or not the address ends in one.
        address += address.endsWith(u'/') ? language : u'/' + language;
    }
    return QUrl(address);
}

} // namespace AppVersion
