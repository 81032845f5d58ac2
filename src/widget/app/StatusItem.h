#pragma once

#include <memory>
#include <optional>
#include <QIcon>
#include <QObject>
#include <QRect>
#include <QSystemTrayIcon>

class QMenu;
class TrayWatch;

/// The icon in the desktop's tray: a ring, a line of text and the menu.
///
/// There is one only while the desktop has a tray; when a tray comes, the icon shows what was told
/// last. The menu and the watch outlive this object.
class StatusItem final : public QObject {
    Q_OBJECT

public:
    StatusItem(TrayWatch &trays, QMenu &menu, QObject *parent = nullptr);
    ~StatusItem() override;
    Q_DISABLE_COPY_MOVE(StatusItem)

    [[nodiscard]] bool isThere() const { return m_icon != nullptr; }
    /// Where on the screens the icon stands; empty when the tray does not tell.
    [[nodiscard]] QRect frame() const;
    /// The key of the ring that is shown; before anything is told, that of no reading.
    [[nodiscard]] const QString &iconKey() const { return m_iconKey; }

    /// Shows how much of the first limit is used, if that is known. Draws only what changes.
    void show(const std::optional<double> &percent, const QString &toolTip);

Q_SIGNALS:
    /// The main button was pressed on the icon; each press of a double one counts.
    void clicked(Qt::KeyboardModifiers modifiers);
    /// The tray shows no menus itself, and the user asks for the icon's.
    void menuRequested();
    /// The icon has appeared or gone.
    void thereChanged();

private:
    void followTray();
    void appear();
    void activate(QSystemTrayIcon::ActivationReason reason);

    TrayWatch &m_trays;
    QMenu &m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    std::optional<double> m_percent;
    QString m_iconKey; ///< of the ring for it
    QString m_toolTip;
};
