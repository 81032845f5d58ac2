#include "pictures/Scene.h"

#include <limits>

using namespace std::chrono_literals;

void Scene::prepare(Stage &stage) const
{
    WidgetModel &model = stage.model();
    model.setNoNode(needs == Needs::Node);
    if (needs == Needs::Nothing) {
        model.loadStats(Canned::statistics(extent));
    }
    model.setLimits(limits);
    model.setCodex(Canned::codexLimits());
    model.setProvider(provider);
    if (crowded) {
        model.setMode(ViewMode::Window);
        model.setTopmost(true);
        model.setUpdate(QStringLiteral("0.2.0"));
    }
    model.setExpanded(expanded);
    model.selectTab(tab);
    model.move(back);
}

QList<Scene> allScenes()
{
    using Needs = Scene::Needs;
    constexpr auto weeks = HistoryTab::Weeks;
    constexpr auto months = HistoryTab::Months;
    constexpr auto sessions = HistoryTab::Sessions;
    constexpr qint64 oldest = std::numeric_limits<int>::max();
    constexpr Canned::Extent young {.days = 20, .sessions = 0};
    const TimePoint gone = Canned::now() - 24h;
    const Limits ended {gone - 168h, Reading {68, gone - 163h}, Reading {31, gone}, {}};
    return {
        {.name = "compact", .enlarged = true},
        {.name = "compact-codex", .provider = Provider::Codex},
        {.name = "compact-buttons", .crowded = true, .enlarged = true},
        {.name = "compact-collecting", .needs = Needs::Statistics},
        {.name = "compact-no-node", .needs = Needs::Node, .enlarged = true},
        {.name = "limits-exhausted", .limits = Canned::limits(100, 91)},
        {.name = "limits-warning", .limits = Canned::limits(91, 62), .enlarged = true},
        {.name = "limits-ended", .limits = ended},
        {.name = "limits-none", .limits = {}},
        {.name = "wide-days", .expanded = true, .enlarged = true},
        {.name = "wide-days-tip-left", .expanded = true, .hoverX = 1},
        {.name = "wide-days-tip", .expanded = true, .hoverX = 142, .enlarged = true},
        {.name = "wide-days-tip-right", .expanded = true, .hoverX = 307},
        {.name = "wide-days-oldest-tip", .expanded = true, .hoverX = 60, .back = oldest},
        {.name = "wide-weeks", .expanded = true, .tab = weeks, .enlarged = true},
        {.name = "wide-weeks-tip", .expanded = true, .tab = weeks, .hoverX = 250},
        {.name = "wide-weeks-young", .expanded = true, .tab = weeks, .extent = young},
        {.name = "wide-months-tip", .expanded = true, .tab = months, .hoverX = 120},
        {.name = "wide-months-young", .expanded = true, .tab = months, .extent = young},
        {.name = "wide-sessions", .expanded = true, .tab = sessions, .enlarged = true},
        {.name = "wide-sessions-none", .expanded = true, .tab = sessions, .extent = young},
        {.name = "wide-codex", .expanded = true, .provider = Provider::Codex},
        {.name = "wide-exhausted", .expanded = true, .limits = Canned::limits(100, 91)},
        {.name = "wide-collecting", .expanded = true, .needs = Needs::Statistics},
        {.name = "wide-no-node", .expanded = true, .needs = Needs::Node},
        {.name = "wide-buttons", .expanded = true, .crowded = true},
    };
}
