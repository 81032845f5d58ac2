#include "widget/sources/JsonDocument.h"

#include <QJsonDocument>
#include <QRegularExpression>

namespace {

constexpr auto mark = "\xEF\xBB\xBF"; // of the byte order
constexpr qsizetype markSize = 3;

/// What Qt has written, so that simdjson takes it: instead of half a surrogate pair the replacement
/// character, and integers of so many digits that they may be beyond 64 bits with a fraction.
QByteArray acceptable(const QByteArray &written)
{
    static const QRegularExpression pieces(
        QStringLiteral(R"("|\\ud[89a-f][0-9a-f]{2}|\\.|(?<![\d.])\d{19,}(?![\d.e]))"));
    const QString text = QString::fromUtf8(written);
    QString made;
    bool inString = false;
    qsizetype end = 0;
    for (auto found = pieces.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QStringView piece = match.capturedView();
        made += QStringView(text).sliced(end, match.capturedStart() - end);
        end = match.capturedEnd();
        inString = inString != (piece == u"\"");
        if (piece.startsWith(u"\\ud")) {
            made += QChar::ReplacementCharacter;
        } else {
            made += piece;
            made += QStringView(!inString && piece.back().isDigit() ? u".0" : u"");
        }
    }
    made += QStringView(text).sliced(end);
    return made.toUtf8();
}

} // namespace

JsonDocument::JsonDocument(const QByteArray &written)
{
    const QByteArray bytes = written.startsWith(mark) ? written.sliced(markSize) : written;
    if (parse(bytes)) {
        return;
    }
    // Stricter than JSON's own rules as simdjson is, a text that it refuses may yet be one. And Qt
    // knows the place of what is none.
    QJsonParseError error;
    const QJsonDocument tolerant = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        m_problem = error.errorString() % u" at byte " % QString::number(error.offset);
    } else if (!parse(acceptable(tolerant.toJson(QJsonDocument::Compact)))) {
        m_problem = QStringLiteral("too large or too deep");
    }
}

bool JsonDocument::parse(const QByteArray &bytes)
{
    simdjson::dom::element root;
    const auto size = static_cast<std::size_t>(bytes.size());
    if (m_parser.parse(bytes.constData(), size).get(root) != simdjson::SUCCESS) {
        return false;
    }
    m_root = root;
    return true;
}
