#pragma once

#include "widget/model/Freshness.h"
#include "widget/model/LegendItem.h"
#include "widget/model/LimitRow.h"
#include "widget/model/PanelTexts.h"
#include "widget/model/PeriodInfo.h"
#include "widget/model/SessionListModel.h"
#include "widget/model/SummaryCell.h"
#include "widget/model/WidgetModel.h"
#include <QObject>

/// The panel's contents in ready texts, derived from the model; the views bind to nothing else.
class Dashboard final : public QObject {
    Q_OBJECT
    Q_PROPERTY(WidgetModel *model READ model CONSTANT)
    Q_PROPERTY(PanelTexts texts READ texts NOTIFY textsChanged)
    Q_PROPERTY(QList<QString> providerNames READ providerNames CONSTANT)
    Q_PROPERTY(int providerIndex READ providerIndex NOTIFY providerChanged)
    Q_PROPERTY(Freshness freshness READ freshness NOTIFY limitsChanged)
    Q_PROPERTY(QList<LimitRow> limits READ limits NOTIFY limitsChanged)
    Q_PROPERTY(QList<SummaryCell> summary READ summary NOTIFY summaryChanged)
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)
    Q_PROPERTY(QList<QString> tabNames READ tabNames NOTIFY textsChanged)
    Q_PROPERTY(int tab READ tab NOTIFY tabChanged)
    Q_PROPERTY(bool listsSessions READ listsSessions NOTIFY tabChanged)
    Q_PROPERTY(PeriodInfo period READ period NOTIFY periodChanged)
    Q_PROPERTY(QList<LegendItem> legend READ legend NOTIFY seriesChanged)
    Q_PROPERTY(SessionListModel *sessions READ sessions CONSTANT)
    Q_PROPERTY(bool expanded READ expanded NOTIFY expandedChanged)
    Q_PROPERTY(bool pinnable READ pinnable NOTIFY modeChanged)
    Q_PROPERTY(bool pinned READ pinned NOTIFY topmostChanged)
    Q_PROPERTY(bool revealed READ revealed NOTIFY revealedChanged)
    Q_PROPERTY(bool updateOffered READ updateOffered NOTIFY updateChanged)

public:
    explicit Dashboard(WidgetModel &model, QObject *parent = nullptr);

    [[nodiscard]] WidgetModel *model() const { return &m_model; }
    [[nodiscard]] PanelTexts texts() const;
    [[nodiscard]] static QStringList providerNames();
    [[nodiscard]] int providerIndex() const;
    [[nodiscard]] Freshness freshness() const { return m_model.freshness(); }
    /// The shorter window's row, then the longer one's.
    [[nodiscard]] QList<LimitRow> limits() const;
    /// The six spans of the provider; zeros as long as there are no statistics.
    [[nodiscard]] QList<SummaryCell> summary() const;
    /// Why there are no statistics; empty once there are.
    [[nodiscard]] QString note() const { return m_model.note(); }
    [[nodiscard]] QStringList tabNames() const;
    [[nodiscard]] int tab() const;
    [[nodiscard]] bool listsSessions() const { return m_model.tab() == HistoryTab::Sessions; }
    [[nodiscard]] PeriodInfo period() const { return m_model.periodInfo(); }
    [[nodiscard]] QList<LegendItem> legend() const { return m_model.series().legend; }
    [[nodiscard]] SessionListModel *sessions() { return &m_sessions; }
    [[nodiscard]] bool expanded() const { return m_model.expanded(); }
    /// The panel can be kept above other windows: a free window may be covered, a dropped one not.
    [[nodiscard]] bool pinnable() const { return m_model.mode() == ViewMode::Window; }
    [[nodiscard]] bool pinned() const { return m_model.topmost(); }
    [[nodiscard]] bool revealed() const { return m_model.revealed(); }
    [[nodiscard]] bool updateOffered() const { return m_model.update().has_value(); }

    /// Shows the tab at this place of tabNames(), if there is one.
    Q_INVOKABLE void selectTab(int index);

    /// The provider at a place of providerNames().
    [[nodiscard]] static Provider provider(int index);

Q_SIGNALS:
    void textsChanged();
    void providerChanged();
    void limitsChanged();
    void summaryChanged();
    void noteChanged();
    void tabChanged();
    void periodChanged();
    void seriesChanged();
    void expandedChanged();
    void modeChanged();
    void topmostChanged();
    void updateChanged();
    void revealedChanged();

private:
    void forwardSignals();
    void listSessions();
    void writeSessions();

    WidgetModel &m_model;
    SessionListModel m_sessions;
    TimePoint m_written; ///< of which day the session rows tell
};
