#pragma once

#include "widget/core/Sleeper.h"
#include <QObject>

class StatusItem;
class StatusMenu;
class TrayWatch;
class WidgetPanel;

/// Opens the menu at clicks on the status item and on the panel, and sees to it that it can be
/// closed again.
class MenuOpener final : public QObject {
    Q_OBJECT

public:
    /// All of it outlives this object.
    struct Parts {
        StatusMenu &menu;
        StatusItem &item;
        const TrayWatch &trays;
        WidgetPanel &widget;
        Sleeper sleeper;
    };

    explicit MenuOpener(Parts parts);

private:
    void menuOpens();
    void makeRoom();
    void holdMenu();
    void popUpMenu();
    void popUpMenuFromPanel(const QPoint &place);
    void statusClicked(Qt::KeyboardModifiers modifiers);

    Parts m_parts;
    bool m_fromPanel = false; ///< the menu was asked for by a click on the panel
};
