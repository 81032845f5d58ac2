#include "pictures/Stage.h"

#include "pictures/Canned.h"
#include "widget/core/Paths.h"
#include <algorithm>
#include <cstdio>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>
#include <QQuickItem>

namespace {

/// Whether something is between being shown and not, or grows.
bool isMoving(const QQuickItem &item)
{
    const QVariant reveal = item.property("reveal");
    const bool fades =
        reveal.isValid() && reveal.toReal() != (item.property("shown").toBool() ? 1 : 0);
    const QList<QQuickItem *> children = item.childItems();
    return fades || item.property("growing").toBool()
        || std::ranges::any_of(children, [](const QQuickItem *c) { return isMoving(*c); });
}

} // namespace

void Stage::setUp()
{
    qputenv("TZ", "Europe/Berlin");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

bool Stage::furnishHome(const QString &translations)
{
    const QString &target = Paths::i18n();
    // Nothing is replaced: what is there already is somebody's own.
    if (!QDir().mkpath(QFileInfo(target).path()) || !QFile::copy(translations, target)) {
        std::fprintf(stderr, "cannot make %s; run this in a home made by tools/with-home\n",
            qUtf8Printable(target));
        return false;
    }
    return true;
}

void Stage::setFont(double enlargement)
{
    constexpr double ordinarySize = 10;
    QFont font(QStringLiteral("Inter"));
    font.setPointSizeF(ordinarySize * enlargement);
    QGuiApplication::setFont(font);
}

Stage::Stage()
    : m_clock(Canned::now())
    , m_model(m_clock, [] { return QStringList(); })
    , m_dashboard(m_model)
{
}

void Stage::show()
{
    m_window = std::make_unique<FloatingPanel>(m_dashboard, m_actions);
    QObject::connect(
        m_window.get(), &FloatingPanel::contentResized, m_window.get(), &FloatingPanel::fitContent);
    m_window->show();
    m_model.setRevealed(true);
}

bool Stage::settle()
{
    QCoreApplication::processEvents();
    if (!m_window->rootObject()) {
        return false;
    }
    const auto isAtRest = [this] {
        return m_window->isExposed() && m_window->size() == m_window->contentSize().toSize()
            && !isMoving(*m_window->rootObject());
    };
    const QDeadlineTimer deadline(10'000);
    while (!isAtRest() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return isAtRest();
}
