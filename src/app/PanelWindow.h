#pragma once

#include "app/PersistedState.h"
#include <QQuickView>

class Dashboard;
class PanelActions;

/// The borderless, translucent window that the panel fills. It takes the panel's size and is moved
/// by dragging any empty place.
class PanelWindow final : public QQuickView {
    Q_OBJECT

public:
    PanelWindow(Dashboard &dashboard, PanelActions &actions);

    /// Shows the panel, at a remembered spot as long as a screen reaches there; else the window
    /// manager chooses. A hidden one starts as small as windows can be.
    void present(const std::optional<WindowSpot> &spot, bool visible);

Q_SIGNALS:
    /// The window is to be closed, which only puts it away.
    void closeRequested();
    /// The user has dragged the top-left corner to here.
    void userMoved(const QPoint &corner);

protected:
    bool event(QEvent *event) override;
    void moveEvent(QMoveEvent *event) override;

private:
    bool m_dragged = false; ///< what moves before a drag is the window manager's doing
};
