#include "sources/TypedReader.h"

namespace {

QLatin1String typeName(QJsonValue::Type type)
{
    switch (type) {
    case QJsonValue::Null:
        return QLatin1String("null");
    case QJsonValue::Bool:
        return QLatin1String("a boolean");
    case QJsonValue::Double:
        return QLatin1String("a number");
    case QJsonValue::String:
        return QLatin1String("a string");
    case QJsonValue::Array:
        return QLatin1String("an array");
    case QJsonValue::Object:
        return QLatin1String("an object");
    case QJsonValue::Undefined:
        break;
    }
    return QLatin1String("nothing");
}

} // namespace

TypedReader::Step::Step(TypedReader &reader, QLatin1String key)
    : m_reader(reader)
{
    reader.m_path.append({key, {}, -1});
}

TypedReader::Step::Step(TypedReader &reader, QStringView name)
    : m_reader(reader)
{
    reader.m_path.append({{}, name, -1});
}

TypedReader::Step::Step(TypedReader &reader, qsizetype index)
    : m_reader(reader)
{
    reader.m_path.append({{}, {}, index});
}

std::optional<double> TypedReader::number(const QJsonObject &in, QLatin1String key)
{
    const QJsonValue value = member(in, key, QJsonValue::Double);
    return value.isUndefined() ? std::nullopt : std::optional(value.toDouble());
}

std::optional<QString> TypedReader::text(const QJsonObject &in, QLatin1String key)
{
    const QJsonValue value = member(in, key, QJsonValue::String);
    return value.isUndefined() ? std::nullopt : std::optional(value.toString());
}

std::optional<bool> TypedReader::flag(const QJsonObject &in, QLatin1String key)
{
    const QJsonValue value = member(in, key, QJsonValue::Bool);
    return value.isUndefined() ? std::nullopt : std::optional(value.toBool());
}

QString TypedReader::requiredText(const QJsonObject &in, QLatin1String key)
{
    const Step step(*this, key);
    const QJsonValue value = in.value(key);
    return expect(value, QJsonValue::String) ? value.toString() : QString();
}

bool TypedReader::expect(const QJsonValue &value, QJsonValue::Type type)
{
    if (value.type() != type) {
        fail(typeName(type), typeName(value.type()));
    }
    return !failed();
}

QJsonValue TypedReader::member(const QJsonObject &in, QLatin1String key, QJsonValue::Type type)
{
    QJsonValue value = in.value(key);
    if (failed() || value.isUndefined() || value.isNull()) {
        return QJsonValue::Undefined;
    }
    if (value.type() != type) {
        const Step step(*this, key);
        fail(typeName(type), typeName(value.type()));
        return QJsonValue::Undefined;
    }
    return value;
}

void TypedReader::fail(QLatin1String expected, QLatin1String found)
{
    if (!failed()) {
        m_problem = path() % u"expected " % expected % u", found " % found;
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
        text += place.key;
        text += place.name;
    }
    return text.isEmpty() ? text : QString(text % u": ");
}
