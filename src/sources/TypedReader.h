#pragma once

#include <optional>
#include <QJsonArray>
#include <QJsonObject>
#include <QVarLengthArray>
#include <type_traits>

/// Reads typed values out of a JSON document and remembers where it is.
///
/// An absent or null member is no value. The first member of a wrong type ends the reading: from
/// then on every call gives nothing, and `problem` names the place, as in "sessions[3].cost:
/// expected a number, found a string".
class TypedReader final {
public:
    [[nodiscard]] bool failed() const { return !m_problem.isEmpty(); }
    [[nodiscard]] const QString &problem() const { return m_problem; }

    [[nodiscard]] std::optional<double> number(const QJsonObject &in, QLatin1String key);
    [[nodiscard]] std::optional<QString> text(const QJsonObject &in, QLatin1String key);
    [[nodiscard]] std::optional<bool> flag(const QJsonObject &in, QLatin1String key);
    /// A text that must be there.
    [[nodiscard]] QString requiredText(const QJsonObject &in, QLatin1String key);

    /// A member object, turned into a record by `read`.
    template <typename Read>
    [[nodiscard]] auto object(const QJsonObject &in, QLatin1String key, Read read)
        -> std::optional<std::invoke_result_t<Read, TypedReader &, const QJsonObject &>>
    {
        const QJsonValue value = member(in, key, QJsonValue::Object);
        if (value.isUndefined()) {
            return std::nullopt;
        }
        const Step step(*this, key);
        return read(*this, value.toObject());
    }

    /// A member array of objects, each turned into a record by `read`.
    template <typename Read>
    [[nodiscard]] auto array(const QJsonObject &in, QLatin1String key, Read read)
        -> std::optional<QList<std::invoke_result_t<Read, TypedReader &, const QJsonObject &>>>
    {
        const QJsonValue value = member(in, key, QJsonValue::Array);
        if (value.isUndefined()) {
            return std::nullopt;
        }
        const Step step(*this, key);
        const QJsonArray elements = value.toArray();
        QList<std::invoke_result_t<Read, TypedReader &, const QJsonObject &>> list;
        list.reserve(elements.size());
        for (qsizetype i = 0; i < elements.size() && !failed(); ++i) {
            const Step element(*this, i);
            const QJsonValue item = elements.at(i);
            if (expect(item, QJsonValue::Object)) {
                list.append(read(*this, item.toObject()));
            }
        }
        return list;
    }

    /// A member object whose every member is turned into a value by `read(reader, value)`.
    template <typename Value, typename Read>
    [[nodiscard]] std::optional<QMap<QString, Value>> map(
        const QJsonObject &in, QLatin1String key, Read read)
    {
        const QJsonValue value = member(in, key, QJsonValue::Object);
        if (value.isUndefined()) {
            return std::nullopt;
        }
        const Step step(*this, key);
        const QJsonObject members = value.toObject();
        QMap<QString, Value> entries;
        for (auto it = members.begin(); it != members.end() && !failed(); ++it) {
            const QString name = it.key();
            const Step entry(*this, name);
            entries.insert(entries.end(), name, read(*this, QJsonValue(it.value())));
        }
        return entries;
    }

    /// Whether a value has the type; when not, the reading has failed here.
    bool expect(const QJsonValue &value, QJsonValue::Type type);

private:
    /// One step into the document: a member's name or an element's position.
    struct Place {
        QLatin1String key;
        QStringView name;
        qsizetype index = -1;
    };

    /// Keeps `m_path` right while a scope reads below a member or element.
    class Step final {
    public:
        Step(TypedReader &reader, QLatin1String key);
        Step(TypedReader &reader, QStringView name);
        Step(TypedReader &reader, qsizetype index);
        ~Step() { m_reader.m_path.removeLast(); }
        Q_DISABLE_COPY_MOVE(Step)

    private:
        TypedReader &m_reader;
    };

    [[nodiscard]] QJsonValue member(
        const QJsonObject &in, QLatin1String key, QJsonValue::Type type);
    void fail(QLatin1String expected, QLatin1String found);
    [[nodiscard]] QString path() const;

    QVarLengthArray<Place, 8> m_path;
    QString m_problem;
};
