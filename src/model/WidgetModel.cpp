#include "model/WidgetModel.h"

#include "core/Dates.h"
#include "model/chooseLanguage.h"
#include "text/Strings.h"
#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr std::array providers {Provider::Claude, Provider::Codex};

}

WidgetModel::WidgetModel(const Clock &clock, SystemLanguages systemLanguages, QObject *parent)
    : QObject(parent)
    , m_systemLanguages(std::move(systemLanguages))
    , m_table(I18n::load())
    , m_languages(I18n::codes(m_table))
    , m_strings(std::make_shared<Strings>(QStringLiteral("en"), m_table))
    , m_now(clock.now())
    , m_sessionList(this)
{
    m_sessionList.setLook(m_strings, m_now);
    for (const auto cause :
        {&WidgetModel::statsChanged, &WidgetModel::providerChanged, &WidgetModel::stringsChanged}) {
        connect(this, cause, this, &WidgetModel::summaryChanged);
    }
    for (const auto cause :
        {&WidgetModel::statsChanged, &WidgetModel::noNodeChanged, &WidgetModel::stringsChanged}) {
        connect(this, cause, this, &WidgetModel::noteChanged);
    }
}

WidgetModel::~WidgetModel() = default;

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

QStringList WidgetModel::providerNames() const
{
    QStringList names;
    std::ranges::transform(providers, std::back_inserter(names), displayName);
    return names;
}

int WidgetModel::providerIndex() const
{
    return static_cast<int>(std::ranges::find(providers, m_provider) - providers.begin());
}

PanelTexts WidgetModel::texts() const
{
    return panelTexts(*m_strings);
}

QList<SummaryCell> WidgetModel::summary() const
{
    return summaryCells(m_stats.value_or(Stats()), m_provider, *m_strings);
}

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

void WidgetModel::setLanguage(const QString &preference)
{
    m_langPref = preference;
    const QString code = chooseLanguage(preference, m_languages, m_systemLanguages());
    m_strings = std::make_shared<Strings>(code, m_table);
    m_sessionList.setLook(m_strings, m_now);
    Q_EMIT stringsChanged();
}

void WidgetModel::setProvider(Provider provider)
{
    m_provider = provider;
    listSessions();
    Q_EMIT providerChanged();
}

void WidgetModel::setProviderIndex(int index)
{
    setProvider(providers.at(static_cast<std::size_t>(index)));
}

void WidgetModel::setNow(TimePoint now)
{
    // Rows name days, so they are written anew only when the day has changed.
    const bool sameDay = Dates::daysAgo(m_now, now) == 0;
    m_now = now;
    if (!sameDay) {
        m_sessionList.setLook(m_strings, m_now);
    }
    Q_EMIT nowChanged();
}

void WidgetModel::setExpanded(bool expanded)
{
    m_expanded = expanded;
    Q_EMIT expandedChanged();
}

void WidgetModel::setNoNode(bool noNode)
{
    m_noNode = noNode;
    Q_EMIT noNodeChanged();
}

void WidgetModel::setUnreadable(bool unreadable)
{
    m_unreadable = unreadable;
    Q_EMIT noteChanged();
}

void WidgetModel::setCollectFailed(bool failed)
{
    m_collectFailed = failed;
    Q_EMIT noteChanged();
}

void WidgetModel::loadStats(const ParsedStats &parsed)
{
    m_sessions = parsed.sessions;
    m_stats = parsed.stats;
    m_unreadable = false;
    listSessions();
    Q_EMIT statsChanged();
}

void WidgetModel::listSessions()
{
    const QString raw = rawValue(m_provider);
    QList<SessionItem> shown;
    std::ranges::copy_if(m_sessions, std::back_inserter(shown),
        [&raw](const SessionItem &session) { return session.provider == raw; });
    m_sessionList.setSessions(shown);
}

#include "moc_WidgetModel.cpp"
