#pragma once

#include <optional>
#include <QByteArray>
#include <QString>
#include <simdjson.h>

/// A whole JSON text, checked and ready to be read.
///
/// It is taken wherever Qt takes it, with or without a byte-order mark. Its parts live as long as
/// this does.
class JsonDocument final {
public:
    explicit JsonDocument(const QByteArray &written);

    /// Its outermost value; nothing when this is no JSON.
    [[nodiscard]] const std::optional<simdjson::dom::element> &root() const { return m_root; }
    /// Why it is none, in words that tell the place.
    [[nodiscard]] const QString &problem() const { return m_problem; }

private:
    [[nodiscard]] bool parse(const QByteArray &bytes);

    simdjson::dom::parser m_parser;
    std::optional<simdjson::dom::element> m_root;
    QString m_problem;
};
