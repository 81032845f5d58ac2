#include "widget/sources/TypedReader.h"

#include <QStringDecoder>

namespace {

using Type = TypedReader::Type;

constexpr qsizetype longestPlace = 200; // in what is told of a failure

QLatin1String typeName(Type type)
{
    switch (type) {
    case Type::NULL_VALUE:
        return QLatin1String("null");
    case Type::BOOL:
        return QLatin1String("a boolean");
    case Type::STRING:
        return QLatin1String("a string");
    case Type::ARRAY:
        return QLatin1String("an array");
    case Type::OBJECT:
        return QLatin1String("an object");
    case Type::INT64:
    case Type::UINT64:
    case Type::DOUBLE:
        break;
    }
    return QLatin1String("a number");
}

bool isOf(TypedReader::Value value, Type type)
{
    return type == Type::DOUBLE ? value.is_number() : value.type() == type;
}

/// The last member with this key.
std::optional<TypedReader::Value> find(TypedReader::Object in, TypedReader::Key key)
{
    std::optional<TypedReader::Value> found;
    for (const auto &[name, value] : in) {
        if (name == key) {
            found = value;
        }
    }
    return found;
}

QString qString(std::string_view text)
{
    const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
    if (text.starts_with("\xEF\xBB\xBF")) {
        // Of itself Qt takes that for a byte-order mark, even within a document.
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
        return decoder(bytes);
    }
    return QString::fromUtf8(bytes);
}

/// Appends a key so that a text that is shown as one line stays one and in its order.
void appendShown(QString &text, const QString &key)
{
    for (const char32_t c : key.toUcs4()) {
        if (QChar::isPrint(c)) {
            text += QString::fromUcs4(&c, 1);
        } else {
            text += QStringLiteral("\\u{%1}").arg(static_cast<uint>(c), 0, 16);
        }
    }
}

std::string_view textOf(TypedReader::Value value)
{
    return value.get_string().value_unsafe();
}

} // namespace

std::optional<double> TypedReader::number(Object in, Key key)
{
    const std::optional<Value> value = member(in, key, Type::DOUBLE);
    return value ? std::optional(value->get_double().value_unsafe()) : std::nullopt;
}

std::optional<QString> TypedReader::text(Object in, Key key)
{
    const std::optional<Value> value = member(in, key, Type::STRING);
    return value ? std::optional(qString(textOf(*value))) : std::nullopt;
}

std::optional<QString> TypedReader::sharedText(Object in, Key key)
{
    const std::optional<Value> value = member(in, key, Type::STRING);
    return value ? std::optional(shared(textOf(*value))) : std::nullopt;
}

std::optional<bool> TypedReader::flag(Object in, Key key)
{
    const std::optional<Value> value = member(in, key, Type::BOOL);
    return value ? std::optional(value->get_bool().value_unsafe()) : std::nullopt;
}

QString TypedReader::requiredText(Object in, Key key)
{
    const Step step(*this, {key, -1});
    const std::optional<Value> value = find(in, key);
    if (!value) {
        fail(Type::STRING, QLatin1String("nothing"));
        return {};
    }
    return expect(*value, Type::STRING) ? qString(textOf(*value)) : QString();
}

bool TypedReader::expect(Value value, Type type)
{
    if (!isOf(value, type)) {
        fail(type, typeName(value.type()));
    }
    return !failed();
}

std::optional<TypedReader::Value> TypedReader::member(Object in, Key key, Type type)
{
    const std::optional<Value> value = failed() ? std::nullopt : find(in, key);
    if (!value || value->is_null()) {
        return std::nullopt;
    }
    if (!isOf(*value, type)) {
        if (m_wrongType == WrongType::Fails) {
            const Step step(*this, {key, -1});
            fail(type, typeName(value->type()));
        }
        return std::nullopt;
    }
    return value;
}

const QString &TypedReader::shared(std::string_view text)
{
    const auto bytes = QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
    const auto known = m_shared.constFind(bytes);
    return known != m_shared.cend() ? *known : *m_shared.insert(bytes, qString(text));
}

void TypedReader::fail(Type expected, QLatin1String found)
{
    if (!failed()) {
        m_problem = path() % u"expected " % typeName(expected) % u", found " % found;
    }
}

QString TypedReader::path() const
{
    QString text;
    for (const Place &place : m_path) {
        if (place.index >= 0) {
            text += u'[' % QString::number(place.index) % u']';
            continue;
        }
        if (!text.isEmpty()) {
            text += u'.';
        }
        // A character takes four bytes at most; the half of one that this may leave is cut below.
        appendShown(text, qString(place.key.substr(0, 4 * longestPlace)));
    }
    if (text.size() > longestPlace) {
        text.truncate(longestPlace - 1);
        text.chop(text.back().isHighSurrogate() ? 1 : 0);
        text += u'…';
    }
    return text.isEmpty() ? text : QString(text % u": ");
}
