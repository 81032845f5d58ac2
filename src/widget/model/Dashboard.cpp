#include "widget/model/Dashboard.h"

#include "widget/core/Dates.h"
#include "widget/text/Strings.h"
#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr std::array providers {Provider::Claude, Provider::Codex};
constexpr std::array tabs {
    HistoryTab::Days, HistoryTab::Weeks, HistoryTab::Months, HistoryTab::Sessions};

template <typename Choices, typename Choice> int placeOf(Choice choice, const Choices &choices)
{
    return static_cast<int>(std::ranges::find(choices, choice) - choices.begin());
}

} // namespace

Dashboard::Dashboard(WidgetModel &model, QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_sessions(this)
{
    forwardSignals();
    writeSessions();
    listSessions();
}

/// Tells of each derived value when something changes that it is derived from.
void Dashboard::forwardSignals()
{
    using Cause = void (WidgetModel::*)();
    using Effect = void (Dashboard::*)();
    const std::initializer_list<std::pair<Cause, Effect>> chains {
        {&WidgetModel::providerChanged, &Dashboard::listSessions},
        {&WidgetModel::sessionsChanged, &Dashboard::listSessions},
        {&WidgetModel::stringsChanged, &Dashboard::writeSessions},
        {&WidgetModel::stringsChanged, &Dashboard::textsChanged},
        {&WidgetModel::updateChanged, &Dashboard::textsChanged},
        {&WidgetModel::providerChanged, &Dashboard::providerChanged},
        {&WidgetModel::limitsChanged, &Dashboard::limitsChanged},
        {&WidgetModel::codexChanged, &Dashboard::limitsChanged},
        {&WidgetModel::providerChanged, &Dashboard::limitsChanged},
        {&WidgetModel::nowChanged, &Dashboard::limitsChanged},
        {&WidgetModel::stringsChanged, &Dashboard::limitsChanged},
        {&WidgetModel::statsChanged, &Dashboard::summaryChanged},
        {&WidgetModel::providerChanged, &Dashboard::summaryChanged},
        {&WidgetModel::stringsChanged, &Dashboard::summaryChanged},
        {&WidgetModel::noteChanged, &Dashboard::noteChanged},
        {&WidgetModel::tabChanged, &Dashboard::tabChanged},
        {&WidgetModel::tabChanged, &Dashboard::periodChanged},
        {&WidgetModel::statsChanged, &Dashboard::periodChanged},
        {&WidgetModel::stringsChanged, &Dashboard::periodChanged},
        {&WidgetModel::noNodeChanged, &Dashboard::periodChanged},
        {&WidgetModel::seriesChanged, &Dashboard::seriesChanged},
        {&WidgetModel::expandedChanged, &Dashboard::expandedChanged},
        {&WidgetModel::modeChanged, &Dashboard::modeChanged},
        {&WidgetModel::revealedChanged, &Dashboard::revealedChanged},
        {&WidgetModel::topmostChanged, &Dashboard::topmostChanged},
        {&WidgetModel::updateChanged, &Dashboard::updateChanged},
    };
    for (const auto &[cause, effect] : chains) {
        connect(&m_model, cause, this, effect);
    }
    connect(&m_model, &WidgetModel::nowChanged, this, [this] {
        // Rows name days, so they are written anew only when the day has changed.
        if (Dates::daysAgo(m_written, m_model.now()) != 0) {
            writeSessions();
        }
    });
}

PanelTexts Dashboard::texts() const
{
    return panelTexts(*m_model.strings(), m_model.update().value_or(QString()));
}

QStringList Dashboard::providerNames()
{
    QStringList names;
    std::ranges::transform(providers, std::back_inserter(names), displayName);
    return names;
}

int Dashboard::providerIndex() const
{
    return placeOf(m_model.provider(), providers);
}

QList<LimitRow> Dashboard::limits() const
{
    const Limits shown = m_model.shownLimits().value_or(Limits());
    const auto [shorter, longer] = m_model.windowLengths();
    const auto row = [this](const std::optional<Reading> &reading, Seconds length) {
        return limitRow(m_model.windowLabel(length), m_model.rowState(reading, length));
    };
    return {row(shown.fiveHour, shorter), row(shown.sevenDay, longer)};
}

QList<SummaryCell> Dashboard::summary() const
{
    return summaryCells(m_model.stats().value_or(Stats()), m_model.provider(), *m_model.strings());
}

QStringList Dashboard::tabNames() const
{
    QStringList names;
    std::ranges::transform(
        tabs, std::back_inserter(names), [this](HistoryTab tab) { return m_model.tabName(tab); });
    return names;
}

int Dashboard::tab() const
{
    return placeOf(m_model.tab(), tabs);
}

void Dashboard::selectTab(int index)
{
    if (index >= 0 && index < static_cast<int>(tabs.size())) {
        m_model.selectTab(tabs.at(static_cast<std::size_t>(index)));
    }
}

Provider Dashboard::provider(int index)
{
    return index == 1 ? Provider::Codex : Provider::Claude;
}

void Dashboard::listSessions()
{
    m_sessions.setSessions(m_model.sessions(), rawValue(m_model.provider()));
}

void Dashboard::writeSessions()
{
    m_written = m_model.now();
    m_sessions.setLook(m_model.strings(), m_written);
}

#include "moc_Dashboard.cpp"
