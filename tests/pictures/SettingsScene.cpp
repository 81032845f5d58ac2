#include "pictures/SettingsScene.h"

#include "pictures/Canned.h"
#include "widget/core/Paths.h"
#include "widget/views/theme/Motion.h"
#include <algorithm>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QQuickItem>

namespace {

using Option = GeneralSettings::Option;

/// Ordinary ones, and such as no layout likes.
QList<SyncLink> links(int count)
{
    const QList<SyncLink> all {
        {u"2JRT-8WQA-HC3N"_qs, u"laptop"_qs, u"linux"_qs, true, u"2025-11-21T13:02:00Z"_qs},
        {u"B7GM-ZPD4-T6KX"_qs,
            u"the-old-workstation-under-the-stairs-that-nobody-dares-to-switch-off"_qs,
            u"darwin"_qs, false, u"2025-11-20T08:15:00Z"_qs},
        {u"M4HD-AAR2-PWS9"_qs, u"מחשב נייד (משרד)"_qs, u"windows"_qs, true,
            u"2025-09-02T19:40:00Z"_qs},
        {u"XK3V-9NUE-5FQL"_qs, {}, {}, {}, {}},
        {u"C6TY-LE7B-GD2Z"_qs, u"<b>build</b> 🚀"_qs, u"freebsd"_qs, true, u"some day"_qs},
    };
    QList<SyncLink> some;
    for (int i = 0; i < count; ++i) {
        some << all.at(i % all.size());
    }
    return some;
}

/// Asks for a command that fails at once, or one that does not end.
void command(SyncSettings &sync, bool ends)
{
    QFile script(Paths::sync());
    if (ends) {
        script.remove();
    } else if (script.open(QIODevice::WriteOnly)) {
        script.write("setInterval(() => {}, 1000);\n");
        script.close();
    }
    sync.syncNow();
}

} // namespace

SettingsStage::SettingsStage(const SettingsScene &scene, const QString &language)
    : m_scene(scene)
    , m_clock(Canned::now())
    , m_model(m_clock, [] { return QStringList(); })
    , m_window(m_model, m_general, m_sync)
{
    using Sync = SettingsScene::Sync;
    Motion::setReduced(true);
    m_model.setLanguage(language);
    if (scene.updateOffered) {
        m_model.setUpdate(QStringLiteral("0.2.0"));
    }
    m_general.setCodexInstalled(true);
    m_general.setValues({{Option::Autostart, true}, {Option::WithCodex, true},
        {Option::Topmost, true}, {Option::Animations, true}, {Option::Updates, true}});
    m_sync.apply({.id = u"K7QF-M2XD-9HNP"_qs,
        .enabled = scene.sync != Sync::Off,
        .name = u"workstation"_qs,
        .hasPassword = scene.hasPassword,
        .links = links(scene.devices),
        .lastSync = u"2025-11-21T14:20:00Z"_qs,
        .historyFrom = {},
        .error = {}});
    if (scene.sync == Sync::Busy || scene.sync == Sync::Failed) {
        command(m_sync, scene.sync == Sync::Failed);
    }
    m_root = m_window.contentItem()->childItems().constFirst();
    m_root->setProperty("tab", scene.tab == SettingsScene::Tab::Data ? 1 : 0);
    m_window.show();
    if (scene.opened) {
        QMetaObject::invokeMethod(
            m_root->findChild<QObject *>(QLatin1String(scene.opened)), "open");
    }
}

SettingsStage::~SettingsStage()
{
    Motion::setReduced(false);
}

bool SettingsStage::settle()
{
    const QDeadlineTimer deadline(10'000);
    while (!m_window.isExposed() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    const QList<QQuickItem *> pages = m_root->findChildren<QQuickItem *>(u"page"_qs);
    for (QQuickItem *page : pages) {
        const double end = page->property("contentHeight").toDouble() - page->height();
        page->setProperty("contentY", std::max(0.0, end) * m_scene.scrolled);
    }
    QCoreApplication::processEvents();
    return m_window.isExposed();
}

QList<SettingsScene> allSettingsScenes()
{
    using Sync = SettingsScene::Sync;
    constexpr auto data = SettingsScene::Tab::Data;
    return {
        {.name = "settings-general", .enlarged = true},
        {.name = "settings-general-update", .updateOffered = true, .scrolled = 1},
        {.name = "settings-general-list", .opened = "choices"},
        {.name = "settings-data", .tab = data, .enlarged = true},
        {.name = "settings-data-end", .tab = data, .scrolled = 1, .enlarged = true},
        {.name = "settings-data-none", .tab = data, .devices = 0, .hasPassword = true},
        {.name = "settings-data-five", .tab = data, .devices = 5, .scrolled = 0.6},
        {.name = "settings-data-many", .tab = data, .devices = 1000, .scrolled = 0.6},
        {.name = "settings-data-busy", .tab = data, .sync = Sync::Busy, .hasPassword = true},
        {.name = "settings-data-problem", .tab = data, .sync = Sync::Failed, .enlarged = true},
        {.name = "settings-data-off", .tab = data, .sync = Sync::Off, .scrolled = 1},
        {.name = "settings-data-asking", .tab = data, .opened = "confirmation", .enlarged = true},
    };
}
