#include "widget/platform/LoginItem.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

QByteArray write(const QString &bundle)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    const auto entry = [&xml](const char *key, const char *type, const char *value) {
        xml.writeTextElement(QStringLiteral("key"), QLatin1String(key));
        xml.writeTextElement(QLatin1String(type), QLatin1String(value));
    };
    xml.writeStartDocument();
    xml.writeDTD(QStringLiteral("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"));
    xml.writeStartElement(QStringLiteral("plist"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    xml.writeStartElement(QStringLiteral("dict"));
    entry("Label", "string", "dev.harrowgate.kestrelbay");
    xml.writeTextElement(QStringLiteral("key"), QStringLiteral("ProgramArguments"));
    xml.writeStartElement(QStringLiteral("array"));
    for (const QString &argument :
        {QStringLiteral("/usr/bin/open"), QStringLiteral("-g"), bundle}) {
        xml.writeTextElement(QStringLiteral("string"), argument);
    }
    xml.writeEndElement();
    xml.writeTextElement(QStringLiteral("key"), QStringLiteral("RunAtLoad"));
    xml.writeEmptyElement(QStringLiteral("true"));
    entry("LimitLoadToSessionType", "string", "Aqua");
    xml.writeEndDocument();
    return bytes;
}

/// The last of the program's arguments; nothing when they are not all texts.
std::optional<QString> lastText(QXmlStreamReader &xml)
{
    std::optional<QString> last;
    while (xml.readNextStartElement()) {
        if (xml.name() != u"string") {
            return std::nullopt;
        }
        last = xml.readElementText();
    }
    return last;
}

std::optional<QString> programIn(QXmlStreamReader &xml)
{
    if (!xml.readNextStartElement() || xml.name() != u"plist" || !xml.readNextStartElement()
        || xml.name() != u"dict") {
        return std::nullopt;
    }
    while (xml.readNextStartElement()) {
        const bool wanted = xml.name() == u"key" && xml.readElementText() == u"ProgramArguments";
        if (!wanted) {
            if (xml.isStartElement()) {
                xml.skipCurrentElement();
            }
            continue;
        }
        return xml.readNextStartElement() && xml.name() == u"array" ? lastText(xml) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<QString> read(const QByteArray &record)
{
    QXmlStreamReader xml(record);
    const std::optional<QString> program = programIn(xml);
    while (!xml.atEnd()) {
        xml.readNext();
    }
    // What breaks off is no property list, whatever it begins with.
    return xml.hasError() ? std::nullopt : program;
}

} // namespace

LoginItem::Format LoginItem::launchAgent()
{
    // Its system keeps elsewhere what the user has switched off.
    return {write, read, [](const QByteArray & /*record*/) { return false; }};
}
