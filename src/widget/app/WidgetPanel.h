#pragma once

#include "widget/app/FloatingPanel.h"
#include "widget/app/OutsidePresses.h"
#include "widget/app/PanelMover.h"
#include "widget/app/PanelPlace.h"
#include "widget/core/Pause.h"
#include "widget/core/Sleeper.h"
#include "widget/model/WidgetModel.h"

class DesktopWatch;

/// The widget's panel on the desktop: when it is shown, where it stands, and what makes it hide.
///
/// In icon mode it hangs from the status item and hides when the user turns to something else; in
/// window mode it stays where the user puts it. Where the desktop has no status items it stands as
/// a window whatever the mode, until there is one.
class WidgetPanel final : public QObject {
    Q_OBJECT

public:
    /// What the panel needs around it; all of it outlives the panel.
    struct Surroundings {
        WidgetModel &model;
        DesktopWatch &desktop;
        const Clock &clock;
        Sleeper sleeper;
        PanelPlace::StatusItemFrame statusItem;
    };

    WidgetPanel(Surroundings surroundings, Dashboard &dashboard, PanelActions &actions);

    [[nodiscard]] FloatingPanel &panel() { return m_panel; }
    /// How it stands on the desktop, which a desktop without a tray does not leave to the user.
    [[nodiscard]] ViewMode mode() const;
    [[nodiscard]] bool wantsVisible() const { return m_wantsVisible; }
    /// On screen, and nothing lies over it.
    [[nodiscard]] bool panelOnTop() const;
    [[nodiscard]] bool gliding() const { return m_mover.frameTarget().has_value(); }
    [[nodiscard]] const std::optional<WindowSpot> &windowSpot() const { return m_place.spot(); }

    /// What is remembered from the last time.
    void restore(bool wantsVisible, const std::optional<WindowSpot> &spot);
    /// Takes its place on the desktop, for the first time.
    void appear();
    void showWidget();
    void hideWidget();
    /// Shows or hides it; one that is covered is brought forward.
    void toggleWidget();
    /// The status item was clicked: as toggleWidget, unless that press has hidden it already.
    void statusClicked();
    void setView(ViewMode mode);
    void applyLevel();
    /// The content is to be larger or smaller by the user's wish, so that it takes its time.
    void noteToggle() { m_lastToggle = m_clock.now(); }
    /// The tray has come or gone.
    void followTray();
    /// While it appears or glides nothing may disturb it. Ends a glide that has run over its time.
    [[nodiscard]] bool isBusy();
    /// Follows the status item, which moves as other items come and go, and what room there is on
    /// the screen that it was moved to.
    void follow();

Q_SIGNALS:
    /// It is being shown.
    void presented();
    /// It is shown or hidden, which is to be remembered.
    void changed();
    /// It stands elsewhere, which is to be remembered.
    void moved();
    void contextClicked(const QPoint &place);

private:
    void watchPanel();
    void watchSurroundings();
    void present();
    void makeFit(QPointF place);
    void applySize(const QSizeF &size);
    void fit();
    void stand(bool alone);
    void spaceChanged();
    void orderOut();
    /// Where the panel is, or is about to be.
    [[nodiscard]] QRectF frame() const;

    Surroundings m_around;
    WidgetModel &m_model;
    const Clock &m_clock;
    FloatingPanel m_panel;
    PanelMover m_mover;
    PanelPlace m_place;
    OutsidePresses m_outsidePresses;
    bool m_wantsVisible = true;
    bool m_alone = false;          ///< there is no status item it could hang from
    qint64 m_visibilityTicket = 0; ///< hides and changes of the view so far
    TimePoint m_lastToggle {};
    Pause m_quiet; ///< while it appears or glides, nothing may disturb it
};
