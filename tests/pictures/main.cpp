// panel_pictures FOLDER: draws the panel and the settings in all their states, languages and
// scales.
//
// Runs in an empty home of its own (tools/with-home --new). The status is 1 when a picture shows
// nothing or a view has warned, since such a view is broken.

#include "pictures/Scene.h"
#include "pictures/SettingsScene.h"
#include "widget/views/theme/Motion.h"
#include <cstdio>
#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>

namespace {

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
    QImage flat = image;
    flat.fill(image.pixel(0, 0));
    return image == flat;
}

/// The panel's corners are round and its surface translucent, so it is drawn on black.
QImage onBlack(const QImage &panel)
{
    constexpr int margin = 20;
    const qreal scale = panel.devicePixelRatio();
    const int around = qRound(margin * scale);
    QImage picture(panel.size() + QSize(2 * around, 2 * around), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::black);
    QPainter(&picture).drawImage(QPointF(margin, margin), panel);
    return picture;
}

void save(const QImage &view, const QString &file)
{
    if (view.isNull() || hasOneColour(view)) {
        fail(file % u": there is nothing to be seen");
    } else if (!onBlack(view).save(file)) {
        fail(file % u": cannot be written");
    }
}

void take(const Scene &scene, const QString &language, const QString &file)
{
    Motion::setReduced(true); // a picture shows where it ends
    Stage stage;
    stage.model().setLanguage(language);
    scene.prepare(stage);
    stage.show();
    stage.model().hover().setX(scene.hoverX);
    if (!stage.settle()) {
        fail(file % u": the panel comes to no rest");
    }
    save(stage.window().grabWindow(), file);
}

void take(const SettingsScene &scene, const QString &language, const QString &file)
{
    SettingsStage stage(scene, language);
    if (!stage.settle()) {
        fail(file % u": the settings come to no rest");
    }
    save(stage.window().grabWindow(), file);
}

/// Draws those of the scenes that are to be seen with a font so much larger.
template <typename Scene>
void takeAll(const QList<Scene> &scenes, double enlargement, const QDir &folder)
{
    const QString scale = qEnvironmentVariable(scaleVariable);
    const QString ending = scale == u"1" ? u".png"_qs : u"@%1x.png"_qs.arg(scale);
    const QString size = enlargement > 1 ? u"-large"_qs : QString();
    for (const Scene &scene : scenes) {
        for (const char *language : {"en", "ru", "de"}) {
            const QString name = QLatin1String(scene.name) % u'-' % QLatin1String(language);
            if (enlargement == 1 || scene.enlarged) {
                take(scene, QLatin1String(language), folder.filePath(name % size % ending));
            }
        }
    }
}

int drawOneScale(int argc, char *argv[])
{
    Stage::setUp();
    const QGuiApplication application(argc, argv);
    qInstallMessageHandler(failOnWarning);
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    for (const double enlargement : {1.0, 1.25}) {
        Stage::setFont(enlargement);
        takeAll(allScenes(), enlargement, folder);
        takeAll(allSettingsScenes(), enlargement, folder);
    }
    qInstallMessageHandler(nullptr);
    return failures == 0 ? 0 : 1;
}

int drawEachScale(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    if (!QDir().mkpath(folder)
        || !Stage::furnishHome(QStringLiteral(KESTRELBAY_SOURCE "/companions/i18n.json"))) {
        fail(QLatin1String("cannot prepare ") % folder);
    }
    for (const char *scale : {"1", "1.5", "2"}) {
        qputenv(scaleVariable, scale);
        if (failures == 0
            && QProcess::execute(QCoreApplication::applicationFilePath(), {folder}) != 0) {
            fail(QLatin1String("no good pictures at scale ") % QLatin1String(scale));
        }
    }
    return failures == 0 ? 0 : 1;
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
