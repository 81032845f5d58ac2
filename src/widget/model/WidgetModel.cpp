#include "widget/model/WidgetModel.h"

#include "formats/Limit.h"
#include "widget/model/allPoints.h"
#include "widget/model/chooseLanguage.h"
#include "widget/model/makeSeries.h"
#include "widget/model/windowLabel.h"
#include "widget/text/Strings.h"
#include <algorithm>

namespace {

/// Every assignment is told of, also that of an equal value.
template <typename Value>
void assign(WidgetModel &model, Value &member, const Value &value, void (WidgetModel::*changed)())
{
    member = value;
    (model.*changed)();
}

} // namespace

WidgetModel::WidgetModel(const Clock &clock, SystemLanguages systemLanguages, QObject *parent)
    : QObject(parent)
    , m_systemLanguages(std::move(systemLanguages))
    , m_table(I18n::load())
    , m_languages(I18n::codes(m_table))
    , m_strings(std::make_shared<Strings>(QStringLiteral("en"), m_table))
    , m_now(clock.now())
{
    for (const auto cause :
        {&WidgetModel::statsChanged, &WidgetModel::noNodeChanged, &WidgetModel::stringsChanged}) {
        connect(this, cause, this, &WidgetModel::noteChanged);
    }
}

WidgetModel::~WidgetModel() = default;

QString WidgetModel::note() const
{
    if (m_stats) {
        return {};
    }
    if (m_noNode) {
        return t(QStringLiteral("needNode"));
    }
    if (m_collectFailed) {
        return label(QStringLiteral("collectFailed"),
            QStringLiteral("Statistics could not be collected. The file widget.log tells more."));
    }
    return m_unreadable ? label(QStringLiteral("statsUnreadable"),
               QStringLiteral("The statistics cannot be read. They will be shown again after the "
                              "next run."))
                        : t(QStringLiteral("collecting"));
}

QString WidgetModel::langCode() const
{
    return m_strings->code();
}

QString WidgetModel::t(const QString &key, const QStringList &arguments) const
{
    return m_strings->t(key, arguments);
}

QString WidgetModel::label(const QString &key, const QString &defaultText) const
{
    return m_strings->text(key, defaultText);
}

QString WidgetModel::languageName(const QString &code) const
{
    return m_table.value(code).value(QStringLiteral("langName"), code);
}

QString WidgetModel::tabName(HistoryTab tab) const
{
    switch (tab) {
    case HistoryTab::Days:
        return t(QStringLiteral("tabDays"));
    case HistoryTab::Weeks:
        return t(QStringLiteral("tabWeeks"));
    case HistoryTab::Months:
        return t(QStringLiteral("tabMonths"));
    case HistoryTab::Sessions:
        break;
    }
    return t(QStringLiteral("tabSessions"));
}

Freshness WidgetModel::freshness() const
{
    return ::freshness(shownLimits(), m_now, *m_strings);
}

std::optional<Limits> WidgetModel::shownLimits() const
{
    if (m_provider == Provider::Codex) {
        return m_codex ? std::optional(m_codex->limits) : std::nullopt;
    }
    return m_limits;
}

std::pair<Seconds, Seconds> WidgetModel::windowLengths() const
{
    if (m_provider == Provider::Codex && m_codex) {
        return {m_codex->primaryLength, m_codex->secondaryLength};
    }
    return {Limit::fiveHours, Limit::week};
}

QString WidgetModel::windowLabel(Seconds length) const
{
    return ::windowLabel(length, *m_strings);
}

RowState WidgetModel::rowState(const std::optional<Reading> &reading, Seconds length) const
{
    return ::rowState(reading, length, m_now, *m_strings);
}

PeriodInfo WidgetModel::periodInfo() const
{
    return ::periodInfo(m_stats, m_tab, m_noNode, *m_strings);
}

void WidgetModel::setLanguage(const QString &preference)
{
    m_langPref = preference;
    const QString code = chooseLanguage(preference, m_languages, m_systemLanguages());
    m_strings = std::make_shared<Strings>(code, m_table);
    Q_EMIT stringsChanged();
    rebuild();
}

void WidgetModel::setLimits(const std::optional<Limits> &limits)
{
    assign(*this, m_limits, limits, &WidgetModel::limitsChanged);
}

void WidgetModel::setCodex(const std::optional<CodexLimits> &codex)
{
    assign(*this, m_codex, codex, &WidgetModel::codexChanged);
}

void WidgetModel::setProvider(Provider provider)
{
    assign(*this, m_provider, provider, &WidgetModel::providerChanged);
}

void WidgetModel::setNow(TimePoint now)
{
    assign(*this, m_now, now, &WidgetModel::nowChanged);
}

void WidgetModel::setExpanded(bool expanded)
{
    assign(*this, m_expanded, expanded, &WidgetModel::expandedChanged);
}

void WidgetModel::setTopmost(bool topmost)
{
    assign(*this, m_topmost, topmost, &WidgetModel::topmostChanged);
}

void WidgetModel::setMode(ViewMode mode)
{
    assign(*this, m_mode, mode, &WidgetModel::modeChanged);
}

void WidgetModel::setUpdate(const std::optional<QString> &version)
{
    assign(*this, m_update, version, &WidgetModel::updateChanged);
}

void WidgetModel::setNoNode(bool noNode)
{
    assign(*this, m_noNode, noNode, &WidgetModel::noNodeChanged);
}

void WidgetModel::setRevealed(bool revealed)
{
    assign(*this, m_revealed, revealed, &WidgetModel::revealedChanged);
}

void WidgetModel::setUnreadable(bool unreadable)
{
    assign(*this, m_unreadable, unreadable, &WidgetModel::noteChanged);
}

void WidgetModel::setCollectFailed(bool failed)
{
    assign(*this, m_collectFailed, failed, &WidgetModel::noteChanged);
}

void WidgetModel::loadStats(const ParsedStats &parsed)
{
    m_sessions = parsed.sessions;
    m_stats = parsed.stats;
    m_unreadable = false;
    m_pointCache.clear();
    Q_EMIT sessionsChanged();
    Q_EMIT statsChanged();
    rebuild();
}

void WidgetModel::rebuild()
{
    // The page that was asked for may be out of range by now.
    m_series = makeSeries(allPoints(), m_tab, m_offset, *m_strings, m_now);
    m_offset = m_series.offset;
    Q_EMIT seriesChanged();
}

void WidgetModel::selectTab(HistoryTab tab)
{
    m_tab = tab;
    m_offset = 0;
    m_hover.setX({});
    Q_EMIT tabChanged();
    rebuild();
}

void WidgetModel::move(qint64 steps)
{
    if (steps == 0) {
        return;
    }
    qint64 target = 0;
    if (__builtin_add_overflow(m_offset, steps, &target)) {
        qFatal("a scroll step beyond any history");
    }
    target = std::min(std::max<qint64>(target, 0), m_series.maxOffset);
    if (target == m_offset) {
        return;
    }
    m_offset = target;
    rebuild();
}

const QList<RawPoint> &WidgetModel::allPoints()
{
    static const QList<RawPoint> none;
    if (!m_stats) {
        return none;
    }
    const auto known = m_pointCache.constFind(m_tab);
    return known != m_pointCache.cend() ? *known
                                        : *m_pointCache.insert(m_tab, ::allPoints(*m_stats, m_tab));
}

#include "moc_WidgetModel.cpp"
