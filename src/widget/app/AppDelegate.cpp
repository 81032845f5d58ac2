#include "widget/app/AppDelegate.h"

#include "widget/model/statusTip.h"
#include "widget/platform/openPage.h"
#include "widget/platform/preferredLanguages.h"
#include "widget/sources/AppVersion.h"
#include <QCoreApplication>
#include <QCursor>
#include <utility>

using namespace std::chrono_literals;

using Work = DeferredWork::Work;

AppDelegate::AppDelegate(const Services &services)
    : m_clock(services.clock)
    , m_sleeper(services.sleeper)
    , m_model(services.clock, preferredLanguages)
    , m_dashboard(m_model)
    , m_sideFiles(m_model)
    , m_stats(m_model)
    , m_indexer(m_model, services.clock)
    , m_account(m_sideFiles, services.clock, services.fetchUsage)
    , m_updates(m_model, services.clock, services.fetchUpdate)
    , m_deferred(services.sleeper)
    , m_systemMotion(services.systemMotion)
    , m_general(nullptr)
    , m_actions(nullptr)
    , m_trays(m_desktop)
    , m_menu(m_model, m_general)
    , m_statusItem(m_trays, m_menu.menu())
    , m_widget({m_model, m_desktop, services.clock, services.sleeper,
                   [this] {
                       return m_statusItem.isThere() ? std::optional(m_statusItem.frame())
                                                     : std::nullopt;
                   }},
          m_dashboard, m_actions)
    , m_options({m_model, m_widget, m_updates, m_systemMotion, m_general}, services.loginItem)
    , m_menuOpener({m_menu, m_statusItem, m_trays, m_widget, services.sleeper})
{
    connectActions();
    connectCollaborators();
    connectMenu();
    connectShell();
    m_menu.setVersion(AppVersion::current());
    connect(&m_heartbeat, &QTimer::timeout, this, &AppDelegate::tick);
}

void AppDelegate::connectActions()
{
    connect(&m_actions, &PanelActions::refreshRequested, this, &AppDelegate::refresh);
    connect(&m_actions, &PanelActions::expandRequested, this,
        [this] { setExpanded(!m_model.expanded()); });
    connect(&m_actions, &PanelActions::updateRequested, this, &AppDelegate::openUpdate);
    connect(&m_actions, &PanelActions::pinRequested, this,
        [this] { m_options.flip(GeneralSettings::Option::Topmost); });
    connect(&m_actions, &PanelActions::providerRequested, this,
        [this](int index) { pickProvider(Dashboard::provider(index)); });
    connect(&m_actions, &PanelActions::hideRequested, &m_widget, &WidgetPanel::hideWidget);
    connect(&m_actions, &PanelActions::settingsRequested, this, &AppDelegate::openSettings);
    connect(&m_actions, &PanelActions::quitRequested, this, &AppDelegate::quit);
    connect(&m_general, &GeneralSettings::updateRequested, this, &AppDelegate::openUpdate);
    connect(&m_general, &GeneralSettings::viewRequested, this, &AppDelegate::setView);
    connect(&m_general, &GeneralSettings::languageRequested, this, &AppDelegate::pickLanguage);
}

void AppDelegate::connectCollaborators()
{
    connect(&m_indexer, &Indexer::finished, this, [this] {
        if (!m_model.hover().x() && !m_widget.isBusy()) {
            m_stats.readStats(StatsFeed::Wait::No);
        }
        if (m_settings) {
            syncSettings().load();
        }
    });
    connect(&m_account, &AccountPoller::limitsRead, this, &AppDelegate::updateLimits);
    connect(&m_updates, &UpdateChecker::replied, this, &AppDelegate::saveState);
    connect(&m_deferred, &DeferredWork::saveDue, this, &AppDelegate::saveState);
    connect(&m_deferred, &DeferredWork::statsDue, this, [this] {
        m_stats.readStats(StatsFeed::Wait::No);
        if (hasPassed(120s, m_indexer.lastIndex(), m_clock.now())) {
            m_indexer.startIndexer();
        }
    });
    connect(&m_options, &Options::changed, this, &AppDelegate::saveState);
}

void AppDelegate::connectMenu()
{
    connect(&m_menu, &StatusMenu::needsUpdate, this, &AppDelegate::refreshMenu);
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
    connect(&m_statusItem, &StatusItem::thereChanged, this, [this] {
        // A tray that is restarted takes a moment to come back.
        m_sleeper(m_statusItem.isThere() ? 200ms : 3s, [this] { m_widget.followTray(); });
    });
    connect(&m_widget, &WidgetPanel::presented, this, &AppDelegate::updateLimits);
    connect(&m_widget, &WidgetPanel::changed, this, [this] { m_deferred.deferWork(Work::Save); });
    connect(&m_widget, &WidgetPanel::moved, this, [this] { m_moved = true; });
}

/// What the views change is remembered, once what was remembered is restored.
void AppDelegate::connectModel()
{
    for (const auto change :
        {&WidgetModel::tabChanged, &WidgetModel::providerChanged, &WidgetModel::expandedChanged}) {
        connect(&m_model, change, this, [this] { m_deferred.deferWork(Work::Save); });
    }
}

void AppDelegate::applicationDidFinishLaunching()
{
    const PersistedState remembered = StateFile::loadState();
    m_updates.restore(remembered.updateCheckedAt, remembered.latestVersion);
    restore(remembered);
    connectModel();

    m_sideFiles.readLimits();
    m_sideFiles.readSideFiles();
    updateLimits();
    m_stats.readStats(StatsFeed::Wait::No);

    m_systemMotion.takeAnswers(); // what appears at once does so before the event loop runs
    m_widget.appear();

    m_indexer.startIndexer();
    m_updates.checkForUpdates(UpdateChecker::Occasion::EveryDay);
    m_heartbeat.start(2s);
    m_options.start();
}

void AppDelegate::restore(const PersistedState &state)
{
    m_options.restore(state);
    m_model.selectTab(state.tab);
    m_model.setProvider(state.provider);
    m_model.setExpanded(state.expanded);
    m_model.setMode(state.view);
    m_widget.restore(!state.hidden, state.windowSpot);
    m_model.setLanguage(state.language);
}

void AppDelegate::saveState()
{
    PersistedState state {
        .view = m_model.mode(),
        .hidden = !m_widget.wantsVisible(),
        .expanded = m_model.expanded(),
        .tab = m_model.tab(),
        .provider = m_model.provider(),
        .language = m_model.langPref(),
        .uiLanguage = m_model.langCode(),
        .windowSpot = m_widget.windowSpot(),
        .updateCheckedAt = m_updates.updateCheckedAt(),
        .latestVersion = m_updates.latestVersion(),
    };
    m_options.store(state);
    m_stateFile.saveState(state);
}

void AppDelegate::applicationWillTerminate()
{
    saveState();
}

void AppDelegate::tick()
{
    m_trays.retry();
    if (m_widget.isBusy()) {
        return;
    }
    m_widget.follow();
    readSideFiles();
    m_account.pollAccount(300s);
    readStats();
    if (hasPassed(600s, m_indexer.lastIndex(), m_clock.now())) {
        m_indexer.startIndexer();
    }
    m_updates.checkForUpdates(UpdateChecker::Occasion::EveryDay);
    if (std::exchange(m_moved, false)) {
        saveState();
    }
}

void AppDelegate::readSideFiles()
{
    const bool codexChanged = m_sideFiles.readSideFiles();
    const bool limitsChanged = m_sideFiles.readLimits();
    // What is left of a window is shown in minutes, so twice a minute is often enough.
    if (codexChanged || limitsChanged || hasPassed(30s, m_lastDraw, m_clock.now())) {
        updateLimits();
    }
}

/// Statistics are never swapped under a pointer that rests on the chart; one that left without a
/// word does not hold them back.
void AppDelegate::readStats()
{
    HoverState &hover = m_model.hover();
    // A bar may be chosen by keyboard as well, wherever the pointer is.
    const auto isLookedAt = [this, &hover] {
        const FloatingPanel &panel = m_widget.panel();
        return panel.isShown()
            && (hover.byKeyboard() ? panel.isActive() : panel.frame().contains(QCursor::pos()));
    };
    if (hover.x() && !isLookedAt()) {
        hover.setX(std::nullopt);
    }
    if (!hover.x()) {
        m_stats.flushHeldStats();
        m_stats.readStats(StatsFeed::Wait::No);
    }
}

void AppDelegate::updateLimits()
{
    m_lastDraw = m_clock.now();
    m_model.setNow(m_lastDraw);
    const Limits limits = m_model.shownLimits().value_or(Limits {});
    const Seconds shorter = m_model.windowLengths().first;
    m_statusItem.show(m_model.rowState(limits.fiveHour, shorter).value, statusTip(m_model));
}

/// What the user asks for: everything is looked at again, changed or not.
void AppDelegate::refresh()
{
    m_sideFiles.forgetLimits();
    m_sideFiles.readLimits();
    updateLimits();
    m_account.pollAccount(30s);
    m_indexer.startIndexer();
    m_updates.checkForUpdates(UpdateChecker::Occasion::OnRequest);
}

void AppDelegate::setExpanded(bool expanded)
{
    m_widget.noteToggle();
    m_model.setExpanded(expanded);
    if (expanded) {
        m_deferred.deferWork(Work::ReadStats); // whoever looks closer wants to see the newest
    }
}

SyncSettings &AppDelegate::syncSettings()
{
    if (!m_syncSettings) {
        m_syncSettings = std::make_unique<SyncSettings>(m_model);
        connect(m_syncSettings.get(), &SyncSettings::syncChanged, this, &AppDelegate::syncChanged);
    }
    return *m_syncSettings;
}

void AppDelegate::openSettings()
{
    if (!m_settings) {
        m_options.syncGeneral();
        syncSettings().load();
        m_settings = std::make_unique<SettingsWindow>(m_model, m_general, syncSettings());
        connect(m_settings.get(), &SettingsWindow::closed, this, [this] {
            if (m_settings) {
                m_settings.release()->deleteLater(); // it is still telling us
            }
        });
    }
    m_settings->present();
}

void AppDelegate::syncChanged()
{
    m_stats.forgetStats();
    if (!m_model.hover().x() && !m_widget.isBusy()) {
        m_stats.readStats(StatsFeed::Wait::No);
    }
}

void AppDelegate::refreshMenu()
{
    m_options.syncGeneral();
    m_menu.refreshMenu(m_widget.wantsVisible() && m_widget.panelOnTop());
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

#include "moc_AppDelegate.cpp"
