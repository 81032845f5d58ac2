#include "widget/app/StatusItem.h"

#include "widget/app/StatusRing.h"
#include "widget/platform/TrayWatch.h"
#include <QGuiApplication>
#include <QMenu>

StatusItem::StatusItem(TrayWatch &trays, QMenu &menu, QObject *parent)
    : QObject(parent)
    , m_trays(trays)
    , m_menu(menu)
    , m_iconKey(StatusRing::key({}))
{
    connect(&trays, &TrayWatch::changed, this, &StatusItem::followTray);
    followTray();
}

StatusItem::~StatusItem() = default;

QRect StatusItem::frame() const
{
    return m_icon ? m_icon->geometry() : QRect();
}

void StatusItem::show(const std::optional<double> &percent, const QString &toolTip)
{
    if (const QString key = StatusRing::key(percent); key != m_iconKey) {
        m_iconKey = key;
        m_percent = percent;
        if (m_icon) {
            m_icon->setIcon(StatusRing::icon(m_percent));
        }
    }
    if (toolTip != m_toolTip) {
        m_toolTip = toolTip;
        if (m_icon) {
            m_icon->setToolTip(m_toolTip);
        }
    }
}

void StatusItem::followTray()
{
    if (m_trays.available() == isThere()) {
        return;
    }
    if (isThere()) {
        m_icon.reset();
    } else {
        appear();
    }
    Q_EMIT thereChanged();
}

void StatusItem::appear()
{
    m_trays.settle();
    m_icon = std::make_unique<QSystemTrayIcon>(StatusRing::icon(m_percent));
    m_icon->setToolTip(m_toolTip);
    // Also where the menu opens at a right press alone: a tray that lives on the bus reads it
    // there.
    m_icon->setContextMenu(&m_menu);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, &StatusItem::activate);
    m_icon->show();
}

void StatusItem::activate(QSystemTrayIcon::ActivationReason reason)
{
    // The second press of a double one is told as nothing but that.
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) {
        Q_EMIT clicked(QGuiApplication::queryKeyboardModifiers());
    } else if (reason == QSystemTrayIcon::Context && m_trays.isOnBus()) {
        Q_EMIT menuRequested(); // over an icon that is a window Qt opens it
    }
}

#include "moc_StatusItem.cpp"
