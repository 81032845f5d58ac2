#pragma once

#include "formats/CodexLimits.h"
#include "widget/core/Clock.h"
#include "widget/model/Freshness.h"
#include "widget/model/HistoryTab.h"
#include "widget/model/HoverState.h"
#include "widget/model/PeriodInfo.h"
#include "widget/model/RawPoint.h"
#include "widget/model/RowState.h"
#include "widget/model/Series.h"
#include "widget/model/ViewMode.h"
#include "widget/sources/Provider.h"
#include "widget/sources/StatsLoad.h"
#include "widget/text/I18n.h"
#include <functional>
#include <memory>
#include <QObject>

class Strings;

/// The one observable state that everything shown is derived from.
///
/// Each assignment of a published value notifies, also of an equal one. Main thread only.
class WidgetModel final : public QObject {
    Q_OBJECT

public:
    /// The system's languages, best first; asked at each choice of a language.
    using SystemLanguages = std::function<QStringList()>;

    WidgetModel(const Clock &clock, SystemLanguages systemLanguages, QObject *parent = nullptr);
    ~WidgetModel() override;
    Q_DISABLE_COPY_MOVE(WidgetModel)

    [[nodiscard]] const std::shared_ptr<const Strings> &strings() const { return m_strings; }
    [[nodiscard]] const std::optional<Limits> &limits() const { return m_limits; }
    [[nodiscard]] const std::optional<CodexLimits> &codex() const { return m_codex; }
    [[nodiscard]] Provider provider() const { return m_provider; }
    [[nodiscard]] TimePoint now() const { return m_now; }
    [[nodiscard]] const std::optional<Stats> &stats() const { return m_stats; }
    [[nodiscard]] const QList<SessionItem> &sessions() const { return m_sessions; }
    [[nodiscard]] const Series &series() const { return m_series; }
    [[nodiscard]] HistoryTab tab() const { return m_tab; }
    [[nodiscard]] bool expanded() const { return m_expanded; }
    [[nodiscard]] bool topmost() const { return m_topmost; }
    [[nodiscard]] ViewMode mode() const { return m_mode; }
    [[nodiscard]] const std::optional<QString> &update() const { return m_update; }
    [[nodiscard]] bool noNode() const { return m_noNode; }
    /// The widget is in sight, so that what changes may be animated.
    [[nodiscard]] bool revealed() const { return m_revealed; }

    [[nodiscard]] HoverState &hover() { return m_hover; }
    [[nodiscard]] const QStringList &languages() const { return m_languages; }
    [[nodiscard]] const QString &langPref() const { return m_langPref; }
    [[nodiscard]] qint64 offset() const { return m_offset; }
    /// Why there are no statistics; empty once there are.
    [[nodiscard]] QString note() const;

    [[nodiscard]] QString langCode() const;
    [[nodiscard]] QString t(const QString &key, const QStringList &arguments = {}) const;
    [[nodiscard]] QString label(const QString &key, const QString &defaultText) const;
    /// A language's own name, its code where the table does not tell.
    [[nodiscard]] QString languageName(const QString &code) const;
    [[nodiscard]] QString tabName(HistoryTab tab) const;

    [[nodiscard]] Freshness freshness() const;
    /// The readings of the chosen provider.
    [[nodiscard]] std::optional<Limits> shownLimits() const;
    /// How long its shorter and its longer window are.
    [[nodiscard]] std::pair<Seconds, Seconds> windowLengths() const;
    [[nodiscard]] QString windowLabel(Seconds length) const;
    [[nodiscard]] RowState rowState(const std::optional<Reading> &reading, Seconds length) const;
    [[nodiscard]] PeriodInfo periodInfo() const;

    void setLanguage(const QString &preference);
    void setLimits(const std::optional<Limits> &limits);
    void setCodex(const std::optional<CodexLimits> &codex);
    void setProvider(Provider provider);
    void setNow(TimePoint now);
    void setExpanded(bool expanded);
    void setTopmost(bool topmost);
    void setMode(ViewMode mode);
    void setUpdate(const std::optional<QString> &version);
    void setNoNode(bool noNode);
    void setRevealed(bool revealed);
    /// The widget is out of sight: from here on nothing is animated.
    void conceal() { setRevealed(false); }
    /// The newest version of the statistics file could not be read.
    void setUnreadable(bool unreadable);
    /// Whether the last run of the indexer has failed.
    void setCollectFailed(bool failed);

    /// Installs a successful load.
    void loadStats(const ParsedStats &parsed);
    /// Builds the series anew, for whoever changed something else that it depends on.
    void rebuild();
    /// Shows a tab from its newest bars on.
    void selectTab(HistoryTab tab);
    /// Scrolls the chart by this many bars, positive to older ones, as far as there are any.
    void move(qint64 steps);

Q_SIGNALS:
    void stringsChanged();
    void limitsChanged();
    void codexChanged();
    void providerChanged();
    void nowChanged();
    void statsChanged();
    void sessionsChanged();
    void seriesChanged();
    void tabChanged();
    void expandedChanged();
    void topmostChanged();
    void modeChanged();
    void updateChanged();
    void noNodeChanged();
    void revealedChanged();
    void noteChanged();

private:
    [[nodiscard]] const QList<RawPoint> &allPoints();

    SystemLanguages m_systemLanguages;
    TranslationTable m_table;
    QStringList m_languages; ///< the codes the table offers
    QString m_langPref;      ///< the language the user chose; empty follows the system
    std::shared_ptr<const Strings> m_strings;
    std::optional<Limits> m_limits;
    std::optional<CodexLimits> m_codex;
    Provider m_provider = Provider::Claude;
    TimePoint m_now;
    std::optional<Stats> m_stats;
    QList<SessionItem> m_sessions;
    Series m_series;
    HistoryTab m_tab = HistoryTab::Days;
    bool m_expanded = false;
    bool m_topmost = true;
    ViewMode m_mode = ViewMode::Icon;
    std::optional<QString> m_update; ///< the offered version, when newer than the running one
    bool m_noNode = false;
    bool m_revealed = false;
    bool m_unreadable = false;
    bool m_collectFailed = false;
    HoverState m_hover;
    qint64 m_offset = 0; ///< how many bars back from the newest the shown page ends
    QMap<HistoryTab, QList<RawPoint>> m_pointCache; ///< filled tab by tab until the next statistics
};
