#pragma once

#include <array>
#include <QHash>
#include <QMap>
#include <QStringList>

/// One language's texts by key.
using Texts = QHash<QString, QString>;

/// Every language's texts by language code, such as "en"; cheap to copy.
using TranslationTable = QMap<QString, Texts>;

/// The translation table that lies beside the program, and the languages it offers.
namespace I18n {

/// The order in which known languages are listed.
inline constexpr std::array<QStringView, 12> preferredOrder {
    u"en", u"ru", u"uk", u"pl", u"de", u"fr", u"es", u"pt", u"tr", u"zh", u"ja", u"ko"};

/// The table in Paths::i18n(). Where that cannot be read or is anything but an object of objects of
/// texts, a table of English without a single text, so that every lookup ends at its key or
/// default.
[[nodiscard]] TranslationTable load();

/// The table's languages as they are listed: known ones in their order, then the others sorted.
[[nodiscard]] QStringList codes(const TranslationTable &table);

} // namespace I18n
