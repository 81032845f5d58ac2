// The part of AppDelegate that is about the status item, its menu and the panel on the desktop.

#include "app/AppDelegate.h"

#include "platform/openPage.h"
#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QWindow>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds grabPause = 200ms;

} // namespace

void AppDelegate::connectMenu()
{
    connect(&m_menu, &StatusMenu::needsUpdate, this, &AppDelegate::refreshMenu);
    connect(&m_menu.menu(), &QMenu::aboutToShow, this, &AppDelegate::menuOpens);
    connect(&m_menu.menu(), &QMenu::aboutToHide, this, [this] { m_menuFromPanel = false; });
    connect(&m_menu, &StatusMenu::toggleWidgetRequested, &m_widget, &WidgetPanel::toggleWidget);
    connect(&m_menu, &StatusMenu::statsRequested, this, &AppDelegate::toggleStatsFromMenu);
    connect(&m_menu, &StatusMenu::settingsRequested, this, &AppDelegate::openSettings);
    connect(&m_menu, &StatusMenu::viewRequested, this, &AppDelegate::setView);
    connect(&m_menu, &StatusMenu::optionRequested, &m_options, &Options::flip);
    connect(&m_menu, &StatusMenu::updateRequested, this, &AppDelegate::openUpdate);
    connect(&m_menu, &StatusMenu::languageRequested, this, &AppDelegate::pickLanguage);
    connect(&m_menu, &StatusMenu::quitRequested, this, &AppDelegate::quit);
}

void AppDelegate::connectShell()
{
    connect(&m_statusItem, &StatusItem::clicked, this, &AppDelegate::statusClicked);
    connect(&m_statusItem, &StatusItem::menuRequested, this, &AppDelegate::popUpMenuOfItem);
    connect(&m_statusItem, &StatusItem::thereChanged, this, [this] {
        // A tray that is restarted takes a moment to come back.
        m_sleeper(m_statusItem.isThere() ? 200ms : 3s, [this] { m_widget.followTray(); });
    });
    connect(&m_widget, &WidgetPanel::presented, this, &AppDelegate::updateLimits);
    connect(&m_widget, &WidgetPanel::changed, this,
        [this] { m_deferred.deferWork(DeferredWork::Work::Save); });
    connect(&m_widget, &WidgetPanel::moved, this, [this] { m_moved = true; });
    connect(&m_widget, &WidgetPanel::contextClicked, this, &AppDelegate::popUpMenu);
}

void AppDelegate::refreshMenu()
{
    m_options.show();
    m_menu.refreshMenu(m_widget.wantsVisible() && m_widget.panelOnTop());
}

/// A tray on the bus asks for the menu as if it were to open whenever it likes, and shows it
/// itself: the panel then hides at the press that opens it.
void AppDelegate::menuOpens()
{
    m_sleeper(grabPause, [this] { holdMenu(); });
    if (!m_menuFromPanel && !m_trays.isOnBus()) {
        makeRoom();
    }
}

/// What hangs from the status item makes room for the menu that opens there.
void AppDelegate::makeRoom()
{
    if (m_widget.mode() == ViewMode::Icon && m_widget.wantsVisible()) {
        m_widget.hideWidget();
        refreshMenu();
    }
}

void AppDelegate::popUpMenuOfItem()
{
    makeRoom();
    m_menu.menu().popup(QCursor::pos());
}

/// A menu that opens while another program has the pointer and the keyboard to itself would not be
/// told of Escape, nor of presses elsewhere, and stay for good: it gets both as soon as they are
/// free.
void AppDelegate::holdMenu()
{
    QWindow *const window = m_menu.menu().windowHandle();
    if (QGuiApplication::platformName() != QLatin1String("xcb") || !m_menu.menu().isVisible()
        || !window) {
        return;
    }
    if (!window->setKeyboardGrabEnabled(true) || !window->setMouseGrabEnabled(true)) {
        m_sleeper(grabPause, [this] { holdMenu(); });
    }
}

void AppDelegate::popUpMenu(const QPoint &place)
{
    m_menuFromPanel = true;
    m_menu.menu().popup(place);
}

/// In window mode every click opens the menu; right clicks do by themselves.
void AppDelegate::statusClicked(Qt::KeyboardModifiers modifiers)
{
    if (m_widget.mode() == ViewMode::Icon && !(modifiers & Qt::ControlModifier)) {
        m_widget.statusClicked();
    } else {
        popUpMenuOfItem();
    }
}

void AppDelegate::toggleStatsFromMenu()
{
    if (!m_widget.wantsVisible()) {
        m_widget.showWidget();
    }
    setExpanded(!m_model.expanded());
}

void AppDelegate::pickProvider(Provider provider)
{
    if (provider != m_model.provider()) {
        m_model.setProvider(provider);
        updateLimits();
        saveState();
    }
}

void AppDelegate::pickLanguage(const QString &code)
{
    m_model.setLanguage(code);
    updateLimits();
    saveState();
}

void AppDelegate::setView(ViewMode mode)
{
    if (mode != m_model.mode()) {
        m_widget.setView(mode);
        saveState();
    }
}

void AppDelegate::openUpdate()
{
    openPage(m_updates.page());
}

void AppDelegate::quit()
{
    saveState();
    QCoreApplication::exit(); // not quit(), which the panel could refuse as it refuses to be closed
}
