#include "widget/text/I18n.h"

#include "widget/core/Paths.h"
#include "widget/core/readJSON.h"
#include <algorithm>
#include <optional>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

/// One language, or nothing when a single one of its values is no text.
std::optional<Texts> readTexts(const QJsonValue &value)
{
    if (!value.isObject()) {
        return std::nullopt;
    }
    const QJsonObject object = value.toObject();
    Texts texts;
    texts.reserve(object.size());
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (!entry.value().isString()) {
            return std::nullopt;
        }
        texts.insert(entry.key(), entry.value().toString());
    }
    return texts;
}

std::optional<TranslationTable> readTable(const QByteArray &bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        return std::nullopt;
    }
    const QJsonObject object = document.object();
    TranslationTable table;
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const std::optional<Texts> texts = readTexts(entry.value());
        if (!texts) {
            return std::nullopt;
        }
        table.insert(entry.key(), *texts);
    }
    return table;
}

} // namespace

namespace I18n {

TranslationTable load()
{
    constexpr qint64 most = 4'000'000; // bytes; a language takes six thousand
    const std::optional<QByteArray> bytes = readJSON(Paths::i18n(), most);
    const std::optional<TranslationTable> table = bytes ? readTable(*bytes) : std::nullopt;
    return table ? *table : TranslationTable {{QStringLiteral("en"), {}}};
}

QStringList codes(const TranslationTable &table)
{
    QStringList listed;
    for (const QStringView known : preferredOrder) {
        if (const QString code = known.toString(); table.contains(code)) {
            listed.append(code);
        }
    }
    for (auto language = table.keyBegin(); language != table.keyEnd(); ++language) {
        if (std::ranges::find(preferredOrder, QStringView(*language)) == preferredOrder.end()) {
            listed.append(*language);
        }
    }
    return listed;
}

} // namespace I18n
