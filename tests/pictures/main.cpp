// panel_pictures FOLDER: draws the panel in all its states, languages and scales.
//
// Runs in an empty home of its own (tools/with-home --new). The status is 1 when a picture shows
// nothing or a view has warned, since such a view is broken.

#include "pictures/Scene.h"
#include <cstdio>
#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>

namespace {

// Around the panel, which is drawn on black: its corners are round and its surface translucent.
constexpr int margin = 20;
constexpr double enlargement = 1.25;
// A scale is settled before there is an application, so that each has a process of its own.
constexpr const char *scaleVariable = "QT_SCALE_FACTOR";

int failures = 0;

void fail(const QString &why)
{
    ++failures;
    std::fprintf(stderr, "panel_pictures: %s\n", qUtf8Printable(why));
}

void failOnWarning(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtDebugMsg && type != QtInfoMsg
        && !text.startsWith(QLatin1String("QStandardPaths"))) {
        fail(text);
    }
}

bool hasOneColour(const QImage &image)
{
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != first) {
                return false;
            }
        }
    }
    return true;
}

QImage onBlack(const QImage &panel)
{
    const qreal scale = panel.devicePixelRatio();
    const int around = qRound(margin * scale);
    QImage picture(panel.size() + QSize(2 * around, 2 * around), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::black);
    QPainter(&picture).drawImage(QPointF(margin, margin), panel);
    return picture;
}

/// Where a picture goes and what it is called after its scene and language.
struct Album {
    QDir folder;
    QString suffix;
};

void take(const Scene &scene, const QString &language, const Album &album)
{
    const QString file = album.folder.filePath(scene.name % u'-' % language % album.suffix);
    Stage stage;
    stage.model().setLanguage(language);
    scene.prepare(stage);
    stage.show();
    if (scene.hoverX) {
        stage.model().hover().setX(scene.hoverX);
    }
    if (!stage.settle()) {
        fail(file % u": the panel comes to no rest");
    }
    const QImage panel = stage.window().grabWindow();
    if (panel.isNull() || hasOneColour(panel)) {
        fail(file % u": there is nothing to be seen");
    } else if (!onBlack(panel).save(file)) {
        fail(file % u": cannot be written");
    }
}

void takeAll(const QDir &folder)
{
    const QString scale = qEnvironmentVariable(scaleVariable);
    const QString ending =
        (scale == QLatin1String("1") ? QString() : u'@' % scale % u'x') % QLatin1String(".png");
    for (const Scene &scene : allScenes()) {
        for (const char *language : {"en", "ru", "de"}) {
            take(scene, QLatin1String(language), {folder, ending});
            if (scene.enlarged) {
                Stage::setFont(enlargement);
                take(scene, QLatin1String(language), {folder, QLatin1String("-large") % ending});
                Stage::setFont();
            }
        }
    }
}

int drawOneScale(int argc, char *argv[])
{
    Stage::setUp();
    const QGuiApplication application(argc, argv);
    Stage::setFont();
    qInstallMessageHandler(failOnWarning);
    takeAll(QDir(QString::fromLocal8Bit(argv[1])));
    qInstallMessageHandler(nullptr);
    return failures == 0 ? 0 : 1;
}

int drawEachScale(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(folder)) {
        fail(QLatin1String("cannot make ") % folder);
        return 1;
    }
    if (!Stage::furnishHome(QStringLiteral(KESTRELBAY_SOURCE "/companions/i18n.json"))) {
        return 1;
    }
    int status = 0;
    for (const char *scale : {"1", "1.5", "2"}) {
        qputenv(scaleVariable, scale);
        if (QProcess::execute(QCoreApplication::applicationFilePath(), {folder}) != 0) {
            status = 1;
        }
    }
    return status;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fputs("usage: panel_pictures FOLDER\n", stderr);
        return 2;
    }
    return qEnvironmentVariableIsSet(scaleVariable) ? drawOneScale(argc, argv)
                                                    : drawEachScale(argc, argv);
}
