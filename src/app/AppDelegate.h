#pragma once

#include "app/PanelWindow.h"
#include "core/Clock.h"
#include "model/WidgetModel.h"
#include "scripts/Indexer.h"
#include "scripts/StatsFeed.h"
#include "views/PanelActions.h"
#include <QObject>
#include <QTimer>

/// Owns everything for the life of the process, connects it, and runs the heartbeat.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    explicit AppDelegate(const Clock &clock);

    /// The start-up sequence.
    void applicationDidFinishLaunching();
    /// The heartbeat, every two seconds: everything periodic is paced from here.
    void tick();

    [[nodiscard]] WidgetModel &model() { return m_model; }
    [[nodiscard]] PanelActions &actions() { return m_actions; }

private:
    void connectActions();

    const Clock &m_clock;
    WidgetModel m_model;
    StatsFeed m_stats;
    Indexer m_indexer;
    PanelActions m_actions;
    PanelWindow m_panel;
    QTimer m_heartbeat;
};
