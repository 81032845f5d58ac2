#pragma once

#include "widget/sources/JsonDocument.h"
#include <QHash>
#include <QList>
#include <QMap>
#include <QVarLengthArray>
#include <string_view>
#include <type_traits>

/// Reads typed values out of a JSON document and remembers where it is.
///
/// An absent or null member is no value; of members with one key the last counts. Unless values of
/// a wrong type are taken as absent, the first one ends the reading: from then on every call gives
/// nothing, and `problem` names the place, as in "sessions[3].cost: expected a number, found a
/// string". Keys come from the file, so the place is cut to 200 characters and what cannot be
/// printed is escaped, as in "\u{a}".
class TypedReader final {
public:
    using Object = simdjson::dom::object;
    using Value = simdjson::dom::element;
    using Type = simdjson::dom::element_type;
    using Key = std::string_view;

    /// What becomes of a value of a wrong type below the outermost one.
    enum class WrongType { Fails, IsAbsent };

    explicit TypedReader(WrongType wrongType = WrongType::Fails)
        : m_wrongType(wrongType)
    {
    }

    [[nodiscard]] bool failed() const { return !m_problem.isEmpty(); }
    [[nodiscard]] const QString &problem() const { return m_problem; }

    [[nodiscard]] std::optional<double> number(Object in, Key key);
    [[nodiscard]] std::optional<QString> text(Object in, Key key);
    /// A text that many records have in common; it is in memory once.
    [[nodiscard]] std::optional<QString> sharedText(Object in, Key key);
    [[nodiscard]] std::optional<bool> flag(Object in, Key key);
    /// A text that must be there.
    [[nodiscard]] QString requiredText(Object in, Key key);

    /// A value that has to be an object, turned into a record by `read`.
    template <typename Read> [[nodiscard]] auto record(Value value, Read read)
    {
        return expect(value, Type::OBJECT) ? read(*this, Object(value))
                                           : std::invoke_result_t<Read, TypedReader &, Object>();
    }

    /// A member object, turned into a record by `read`.
    template <typename Read>
    [[nodiscard]] auto object(Object in, Key key, Read read)
        -> std::optional<std::invoke_result_t<Read, TypedReader &, Object>>
    {
        const std::optional<Value> value = member(in, key, Type::OBJECT);
        if (!value) {
            return std::nullopt;
        }
        const Step step(*this, {key, -1});
        return read(*this, Object(*value));
    }

    /// A member array of objects, each turned into a record by `read` and appended to a list. What
    /// is no object is left out where a wrong type is taken as absent.
    template <typename List, typename Read>
    [[nodiscard]] std::optional<List> array(Object in, Key key, Read read)
    {
        const std::optional<Value> value = member(in, key, Type::ARRAY);
        if (!value) {
            return std::nullopt;
        }
        const Step step(*this, {key, -1});
        const simdjson::dom::array elements(*value);
        List list;
        list.reserve(static_cast<qsizetype>(elements.size()));
        for (const Value item : elements) {
            const Step element(*this, {{}, list.size()});
            if (m_wrongType == WrongType::IsAbsent && !item.is_object()) {
                continue;
            }
            if (failed() || !expect(item, Type::OBJECT)) {
                break;
            }
            list.append(read(*this, Object(item)));
        }
        return list;
    }

    /// A member object whose every member is turned into a value by `read(reader, value)`.
    template <typename Entry, typename Read>
    [[nodiscard]] std::optional<QMap<QString, Entry>> map(Object in, Key key, Read read)
    {
        const std::optional<Value> value = member(in, key, Type::OBJECT);
        if (!value) {
            return std::nullopt;
        }
        const Step step(*this, {key, -1});
        QMap<QString, Entry> entries;
        for (const auto &[name, item] : Object(*value)) {
            if (failed()) {
                break;
            }
            const Step entry(*this, {name, -1});
            entries.insert(shared(name), read(*this, item));
        }
        return entries;
    }

    /// Whether a value has the type; when not, the reading has failed here.
    bool expect(Value value, Type type);

private:
    /// One step into the document: a member's name or an element's position.
    struct Place {
        Key key;
        qsizetype index = -1;
    };

    /// Keeps `m_path` right while a scope reads below a member or element.
    class Step final {
    public:
        Step(TypedReader &reader, const Place &place)
            : m_reader(reader)
        {
            m_reader.m_path.append(place);
        }
        ~Step() { m_reader.m_path.removeLast(); }
        Q_DISABLE_COPY_MOVE(Step)

    private:
        TypedReader &m_reader;
    };

    [[nodiscard]] std::optional<Value> member(Object in, Key key, Type type);
    [[nodiscard]] const QString &shared(std::string_view text);
    void fail(Type expected, QLatin1String found);
    [[nodiscard]] QString path() const;

    WrongType m_wrongType;
    QVarLengthArray<Place, 8> m_path;
    QHash<QByteArray, QString> m_shared; ///< by their bytes, which are the document's
    QString m_problem;
};
