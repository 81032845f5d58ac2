#pragma once

#include "widget/model/GeneralSettings.h"
#include "widget/model/ViewMode.h"
#include <optional>
#include <QMenu>
#include <QObject>

class WidgetModel;

/// The program's only menu. It only mirrors: what the user picks is asked of the shell, and comes
/// back by `refreshMenu`.
class StatusMenu final : public QObject {
    Q_OBJECT

public:
    StatusMenu(const WidgetModel &model, const GeneralSettings &general, QObject *parent = nullptr);

    [[nodiscard]] QMenu &menu() { return m_menu; }

    /// The running version, if it is known.
    void setVersion(const std::optional<QString> &version) { m_version = version; }
    /// Sets every title, check mark and visibility. `widgetOnTop`: the widget is meant to be on
    /// screen, and nothing covers it.
    void refreshMenu(bool widgetOnTop);

Q_SIGNALS:
    /// The menu is about to be shown, or one of its items was picked: time for `refreshMenu`.
    void needsUpdate();
    void toggleWidgetRequested();
    void statsRequested();
    void settingsRequested();
    void viewRequested(ViewMode mode);
    void optionRequested(GeneralSettings::Option option);
    void updateRequested();
    /// An empty code follows the system.
    void languageRequested(const QString &code);
    void quitRequested();

private:
    void makeItems();
    void makeLanguages(QMenu &submenu);
    void refreshIcons();

    const WidgetModel &m_model;
    const GeneralSettings &m_general;
    std::optional<QString> m_version;
    QMenu m_menu;
    QList<QAction *> m_items;         ///< one for each row of the table
    QList<QAction *> m_languageItems; ///< one for each language, with its code
    qint64 m_paletteKey = 0;          ///< of the colours that the icons are drawn in
};
