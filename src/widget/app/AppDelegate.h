#pragma once

#include "widget/app/MenuOpener.h"
#include "widget/app/Options.h"
#include "widget/app/Services.h"
#include "widget/app/SettingsWindow.h"
#include "widget/app/StateFile.h"
#include "widget/app/StatusItem.h"
#include "widget/app/StatusMenu.h"
#include "widget/app/WidgetPanel.h"
#include "widget/model/Dashboard.h"
#include "widget/model/WidgetModel.h"
#include "widget/platform/DesktopWatch.h"
#include "widget/platform/TrayWatch.h"
#include "widget/scripts/Indexer.h"
#include "widget/scripts/SideFiles.h"
#include "widget/scripts/StatsFeed.h"
#include "widget/scripts/SyncSettings.h"
#include "widget/views/PanelActions.h"
#include <QObject>
#include <QTimer>

/// Owns everything for the life of the process, connects it, runs the heartbeat and does what the
/// user asks for.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    explicit AppDelegate(const Services &services);

    /// The start-up sequence.
    void applicationDidFinishLaunching();
    /// The heartbeat, every two seconds: everything periodic is paced from here.
    void tick();
    /// The last thing before the end.
    void applicationWillTerminate();

    [[nodiscard]] WidgetModel &model() { return m_model; }
    [[nodiscard]] PanelActions &actions() { return m_actions; }
    [[nodiscard]] GeneralSettings &general() { return m_general; }
    [[nodiscard]] StatusMenu &menu() { return m_menu; }
    [[nodiscard]] WidgetPanel &widget() { return m_widget; }
    [[nodiscard]] SyncSettings &syncSettings();
    /// Nothing while it is closed.
    [[nodiscard]] SettingsWindow *settings() { return m_settings.get(); }

    void openSettings();
    /// Another history counts than did.
    void syncChanged();

private:
    void connectModel();
    void connectActions();
    void connectCollaborators();
    void connectMenu();
    void connectShell();
    void refreshMenu();
    void toggleStatsFromMenu();
    void pickProvider(Provider provider);
    void pickLanguage(const QString &code);
    void setView(ViewMode mode);
    void openUpdate();
    void quit();
    void restore(const PersistedState &state);
    void saveState();
    void refresh();
    void updateLimits();
    void readSideFiles();
    void readStats();
    void setExpanded(bool expanded);

    const Clock &m_clock;
    Sleeper m_sleeper;
    WidgetModel m_model;
    Dashboard m_dashboard;
    SideFiles m_sideFiles;
    StatsFeed m_stats;
    Indexer m_indexer;
    AccountPoller m_account;
    UpdateChecker m_updates;
    DeferredWork m_deferred;
    StateFile m_stateFile;
    ReducedMotion &m_systemMotion;
    GeneralSettings m_general;
    PanelActions m_actions;
    DesktopWatch m_desktop;
    TrayWatch m_trays;
    StatusMenu m_menu;
    StatusItem m_statusItem;
    WidgetPanel m_widget;
    Options m_options;
    MenuOpener m_menuOpener;
    std::unique_ptr<SyncSettings> m_syncSettings; ///< once it is asked for
    std::unique_ptr<SettingsWindow> m_settings;   ///< while it is open
    QTimer m_heartbeat;

    bool m_moved = false;    ///< the panel, by the user, since the last save
    TimePoint m_lastDraw {}; ///< when the limit rows were last drawn anew
};
