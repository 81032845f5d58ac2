#include "pictures/Scene.h"

#include "pictures/Canned.h"
#include <limits>

namespace {

void fill(Stage &stage, const ParsedStats &parsed)
{
    stage.model().loadStats(parsed);
    stage.model().setLimits(Canned::limits());
    stage.model().setCodex(Canned::codexLimits());
}

void compact(Stage &stage)
{
    fill(stage, Canned::statistics());
}

/// The wide panel with this tab, scrolled back by as many bars.
std::function<void(Stage &)> wide(
    HistoryTab tab, qint64 back = 0, const ParsedStats &parsed = Canned::statistics())
{
    return [=](Stage &stage) {
        fill(stage, parsed);
        stage.model().setExpanded(true);
        stage.model().selectTab(tab);
        stage.model().move(back);
    };
}

std::function<void(Stage &)> codex(bool expanded)
{
    return [=](Stage &stage) {
        fill(stage, Canned::statistics());
        stage.model().setProvider(Provider::Codex);
        stage.model().setExpanded(expanded);
    };
}

std::function<void(Stage &)> withLimits(const std::optional<Limits> &limits, bool expanded = false)
{
    return [=](Stage &stage) {
        compact(stage);
        stage.model().setExpanded(expanded);
        stage.model().setLimits(limits);
    };
}

/// Without statistics, as long as they are being collected or because nothing can collect them.
std::function<void(Stage &)> empty(bool noNode, bool expanded)
{
    return [=](Stage &stage) {
        stage.model().setLimits(Canned::limits());
        stage.model().setNoNode(noNode);
        stage.model().setExpanded(expanded);
    };
}

/// As many buttons as the header ever has.
std::function<void(Stage &)> crowded(bool expanded)
{
    return [=](Stage &stage) {
        compact(stage);
        stage.actions().opensSettings = true;
        stage.model().setMode(ViewMode::Window);
        stage.model().setTopmost(true);
        stage.model().setUpdate(QStringLiteral("0.2.0"));
        stage.model().setExpanded(expanded);
    };
}

QList<Scene> historyScenes()
{
    constexpr qint64 oldest = std::numeric_limits<int>::max();
    const ParsedStats young = Canned::statistics({.days = 20, .sessions = 0});
    return {
        {QStringLiteral("wide-days"), wide(HistoryTab::Days), {}, true},
        {QStringLiteral("wide-weeks"), wide(HistoryTab::Weeks), {}, true},
        {QStringLiteral("wide-months"), wide(HistoryTab::Months)},
        {QStringLiteral("wide-sessions"), wide(HistoryTab::Sessions), {}, true},
        {QStringLiteral("wide-days-tip"), wide(HistoryTab::Days), 142, true},
        {QStringLiteral("wide-days-tip-left"), wide(HistoryTab::Days), 1},
        {QStringLiteral("wide-days-tip-right"), wide(HistoryTab::Days), 307},
        {QStringLiteral("wide-weeks-tip"), wide(HistoryTab::Weeks), 250},
        {QStringLiteral("wide-months-tip"), wide(HistoryTab::Months), 120},
        {QStringLiteral("wide-days-oldest"), wide(HistoryTab::Days, oldest)},
        {QStringLiteral("wide-days-oldest-tip"), wide(HistoryTab::Days, oldest), 60},
        {QStringLiteral("wide-weeks-young"), wide(HistoryTab::Weeks, 0, young)},
        {QStringLiteral("wide-months-young"), wide(HistoryTab::Months, 0, young)},
        {QStringLiteral("wide-sessions-none"), wide(HistoryTab::Sessions, 0, young)},
        {QStringLiteral("wide-sessions-awkward"),
            wide(HistoryTab::Sessions, 0, Canned::awkwardSessions()), {}, true},
        {QStringLiteral("wide-sessions-many"),
            wide(HistoryTab::Sessions, 0, Canned::statistics({.sessions = 500}))},
    };
}

} // namespace

QList<Scene> allScenes()
{
    return historyScenes()
        + QList<Scene> {
            {QStringLiteral("compact"), compact, {}, true},
            {QStringLiteral("codex-compact"), codex(false)},
            {QStringLiteral("codex-wide"), codex(true)},
            {QStringLiteral("limits-exhausted"), withLimits(Canned::limits(100, 91))},
            {QStringLiteral("limits-exhausted-wide"), withLimits(Canned::limits(100, 91), true)},
            {QStringLiteral("limits-warning"), withLimits(Canned::limits(91, 62)), {}, true},
            {QStringLiteral("limits-ended"), withLimits(Canned::endedLimits())},
            {QStringLiteral("limits-none"), withLimits({})},
            {QStringLiteral("collecting-compact"), empty(false, false)},
            {QStringLiteral("collecting-wide"), empty(false, true)},
            {QStringLiteral("no-node-compact"), empty(true, false), {}, true},
            {QStringLiteral("no-node-wide"), empty(true, true)},
            {QStringLiteral("buttons-compact"), crowded(false), {}, true},
            {QStringLiteral("buttons-wide"), crowded(true)},
        };
}
