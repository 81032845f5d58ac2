#include "app/AppDelegate.h"

#include "platform/preferredLanguages.h"
#include <QGuiApplication>

using namespace std::chrono_literals;

AppDelegate::AppDelegate(const Clock &clock)
    : m_clock(clock)
    , m_model(clock, preferredLanguages)
    , m_stats(m_model)
    , m_indexer(m_model, clock)
    , m_actions(nullptr)
    , m_panel(m_model, m_actions)
{
    connectActions();
    connect(
        &m_indexer, &Indexer::finished, this, [this] { m_stats.readStats(StatsFeed::Wait::No); });
    connect(&m_heartbeat, &QTimer::timeout, this, &AppDelegate::tick);
}

void AppDelegate::connectActions()
{
    connect(&m_actions, &PanelActions::refreshRequested, &m_indexer, &Indexer::startIndexer);
    connect(&m_actions, &PanelActions::expandRequested, this,
        [this] { m_model.setExpanded(!m_model.expanded()); });
    connect(&m_actions, &PanelActions::providerRequested, &m_model, &WidgetModel::setProviderIndex);
    connect(&m_actions, &PanelActions::quitRequested, qGuiApp, &QCoreApplication::quit);
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_model.setLanguage({});
    m_stats.readStats(StatsFeed::Wait::No);
    m_panel.show();
    m_indexer.startIndexer();
    m_heartbeat.start(2s);
}

void AppDelegate::tick()
{
    m_model.setNow(m_clock.now());
    m_stats.readStats(StatsFeed::Wait::No);
    if (m_clock.now() - m_indexer.lastIndex() >= 600s) {
        m_indexer.startIndexer();
    }
}

#include "moc_AppDelegate.cpp"
