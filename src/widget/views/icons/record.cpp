// kestrelbay-record-icons FOLDER FILE...: turns each drawing, an SVG of 24 by 24, into a recording
// of how it is painted, in black. So the program that shows it needs no SVG reader.

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QPicture>
#include <QSvgRenderer>

namespace {

bool record(const QString &path, const QString &folder)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    QSvgRenderer drawing(file.readAll().replace("currentColor", "black"));
    QPicture recording;
    QPainter painter(&recording);
    drawing.render(&painter, drawing.viewBoxF());
    painter.end();
    return drawing.isValid()
        && recording.save(folder % u'/' % QFileInfo(path).baseName() % QStringLiteral(".pic"));
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    for (qsizetype i = 2; i < arguments.size(); ++i) {
        if (!record(arguments.at(i), arguments.at(1))) {
            qCritical("cannot record %s", qUtf8Printable(arguments.at(i)));
            return 1;
        }
    }
    return 0;
}
