#include "widget/app/MenuOpener.h"

#include "widget/app/StatusItem.h"
#include "widget/app/StatusMenu.h"
#include "widget/app/WidgetPanel.h"
#include "widget/platform/TrayWatch.h"
#include <QCursor>
#include <QGuiApplication>
#include <QWindow>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds grabPause = 200ms;

} // namespace

MenuOpener::MenuOpener(Parts parts)
    : m_parts(std::move(parts))
{
    const QMenu &menu = m_parts.menu.menu();
    connect(&menu, &QMenu::aboutToShow, this, &MenuOpener::menuOpens);
    connect(&menu, &QMenu::aboutToHide, this, [this] { m_fromPanel = false; });
    connect(&m_parts.item, &StatusItem::clicked, this, &MenuOpener::statusClicked);
    connect(&m_parts.item, &StatusItem::menuRequested, this, &MenuOpener::popUpMenu);
    connect(&m_parts.widget, &WidgetPanel::contextClicked, this, &MenuOpener::popUpMenuFromPanel);
}

/// A tray on the bus asks for the menu as if it were to open whenever it likes, and shows it
/// itself: the panel then hides at the press that opens it.
void MenuOpener::menuOpens()
{
    m_parts.sleeper(grabPause, [this] { holdMenu(); });
    if (!m_fromPanel && !m_parts.trays.isOnBus()) {
        makeRoom();
    }
}

/// What hangs from the status item makes room for the menu that opens there.
void MenuOpener::makeRoom()
{
    if (m_parts.widget.mode() == ViewMode::Icon && m_parts.widget.wantsVisible()) {
        m_parts.widget.hideWidget();
        Q_EMIT m_parts.menu.needsUpdate();
    }
}

void MenuOpener::popUpMenu()
{
    makeRoom();
    m_parts.menu.menu().popup(QCursor::pos());
}

/// A menu that opens while another program has the pointer and the keyboard to itself would not be
/// told of Escape, nor of presses elsewhere, and stay for good: it gets both as soon as they are
/// free.
void MenuOpener::holdMenu()
{
    QWindow *const window = m_parts.menu.menu().windowHandle();
    if (QGuiApplication::platformName() != QLatin1String("xcb") || !m_parts.menu.menu().isVisible()
        || !window) {
        return;
    }
    if (!window->setKeyboardGrabEnabled(true) || !window->setMouseGrabEnabled(true)) {
        m_parts.sleeper(grabPause, [this] { holdMenu(); });
    }
}

void MenuOpener::popUpMenuFromPanel(const QPoint &place)
{
    m_fromPanel = true;
    m_parts.menu.menu().popup(place);
}

/// In window mode every click opens the menu; right clicks do by themselves.
void MenuOpener::statusClicked(Qt::KeyboardModifiers modifiers)
{
    if (m_parts.widget.mode() == ViewMode::Icon && !(modifiers & Qt::ControlModifier)) {
        m_parts.widget.statusClicked();
    } else {
        popUpMenu();
    }
}

#include "moc_MenuOpener.cpp"
