#pragma once

#include "core/Clock.h"
#include "model/PanelTexts.h"
#include "model/SessionListModel.h"
#include "model/SummaryCell.h"
#include "sources/Provider.h"
#include "sources/StatsLoad.h"
#include "text/I18n.h"
#include <functional>
#include <memory>
#include <QObject>

class Strings;

/// The one observable state that every view renders.
///
/// Each assignment of a published value notifies, also of an equal one. Main thread only.
class WidgetModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<QString> providerNames READ providerNames CONSTANT)
    Q_PROPERTY(int providerIndex READ providerIndex NOTIFY providerChanged)
    Q_PROPERTY(bool expanded READ expanded NOTIFY expandedChanged)
    Q_PROPERTY(PanelTexts texts READ texts NOTIFY stringsChanged)
    Q_PROPERTY(QList<SummaryCell> summary READ summary NOTIFY summaryChanged)
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)
    Q_PROPERTY(SessionListModel *sessionList READ sessionList CONSTANT)

public:
    /// The system's languages, best first; asked at each choice of a language.
    using SystemLanguages = std::function<QStringList()>;

    WidgetModel(const Clock &clock, SystemLanguages systemLanguages, QObject *parent = nullptr);
    ~WidgetModel() override;
    Q_DISABLE_COPY_MOVE(WidgetModel)

    [[nodiscard]] const Strings &strings() const { return *m_strings; }
    [[nodiscard]] const QStringList &languages() const { return m_languages; }
    [[nodiscard]] const QString &langPref() const { return m_langPref; }
    [[nodiscard]] Provider provider() const { return m_provider; }
    [[nodiscard]] TimePoint now() const { return m_now; }
    [[nodiscard]] const std::optional<Stats> &stats() const { return m_stats; }
    [[nodiscard]] const QList<SessionItem> &sessions() const { return m_sessions; }
    [[nodiscard]] bool expanded() const { return m_expanded; }
    [[nodiscard]] bool noNode() const { return m_noNode; }
    /// The newest version of the statistics file could not be read.
    [[nodiscard]] bool unreadable() const { return m_unreadable; }

    [[nodiscard]] QString langCode() const;
    [[nodiscard]] QString t(const QString &key, const QStringList &arguments = {}) const;
    [[nodiscard]] QString label(const QString &key, const QString &defaultText) const;
    /// A language's own name, its code where the table does not tell.
    [[nodiscard]] QString languageName(const QString &code) const;

    // What the panel draws.
    [[nodiscard]] QStringList providerNames() const;
    [[nodiscard]] int providerIndex() const;
    [[nodiscard]] PanelTexts texts() const;
    /// The six spans of the provider; zeros as long as there are no statistics.
    [[nodiscard]] QList<SummaryCell> summary() const;
    /// Why there is nothing to show; empty once there are statistics.
    [[nodiscard]] QString note() const;
    [[nodiscard]] SessionListModel *sessionList() { return &m_sessionList; }

    void setLanguage(const QString &preference);
    void setProvider(Provider provider);
    /// Shows the provider at this place of providerNames().
    void setProviderIndex(int index);
    void setNow(TimePoint now);
    void setExpanded(bool expanded);
    void setNoNode(bool noNode);
    void setUnreadable(bool unreadable);
    /// Whether the last run of the indexer has failed.
    void setCollectFailed(bool failed);
    /// Installs a successful load.
    void loadStats(const ParsedStats &parsed);

Q_SIGNALS:
    void stringsChanged();
    void providerChanged();
    void nowChanged();
    void statsChanged();
    void expandedChanged();
    void noNodeChanged();
    void summaryChanged();
    void noteChanged();

private:
    void listSessions();

    SystemLanguages m_systemLanguages;
    TranslationTable m_table;
    QStringList m_languages; ///< the codes the table offers
    QString m_langPref;      ///< the language the user chose; empty follows the system
    std::shared_ptr<const Strings> m_strings;
    Provider m_provider = Provider::Claude;
    TimePoint m_now;
    std::optional<Stats> m_stats;
    QList<SessionItem> m_sessions;
    bool m_expanded = false;
    bool m_noNode = false;
    bool m_unreadable = false;
    bool m_collectFailed = false;
    SessionListModel m_sessionList;
};
