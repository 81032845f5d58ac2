#pragma once

#include "widget/model/WidgetModel.h"
#include "widget/views/ChartColumn.h"
#include "widget/views/ChartLayout.h"
#include "widget/views/ChartTipText.h"
#include <QPointer>
#include <QQuickItem>

/// One page of history as it is drawn, and what the pointer and the keyboard do with it.
class HistoryChart : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(WidgetModel *model READ model WRITE setModel NOTIFY modelChanged REQUIRED)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QList<ChartColumn> columns READ columns NOTIFY pageChanged)
    Q_PROPERTY(double cell READ cell NOTIFY pageChanged)
    Q_PROPERTY(QString reference READ reference NOTIFY pageChanged)
    Q_PROPERTY(double labelSize READ labelSize CONSTANT)
    Q_PROPERTY(QList<double> opacities READ opacities NOTIFY opacitiesChanged)
    Q_PROPERTY(int hovered READ hovered NOTIFY hoveredChanged)
    Q_PROPERTY(ChartTipText tip READ tip NOTIFY tipChanged)

public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] WidgetModel *model() const { return m_model; }
    void setModel(WidgetModel *model);

    [[nodiscard]] int count() const { return static_cast<int>(m_columns.size()); }
    [[nodiscard]] const QList<ChartColumn> &columns() const { return m_columns; }
    [[nodiscard]] double cell() const { return m_layout.cell(); }
    /// What a bar of full height costs; empty without bars.
    [[nodiscard]] const QString &reference() const { return m_reference; }
    /// Of the labels' font, in points for a system font of ordinary size.
    [[nodiscard]] static double labelSize() { return 10; }
    [[nodiscard]] const QList<double> &opacities() const { return m_hover.opacities; }
    /// The bar under the pointer or chosen by keyboard; −1 for none, since QML knows no optional.
    [[nodiscard]] int hovered() const { return m_hover.index; }
    /// Of the bar that is hovered, or was last: a tip keeps its texts while it fades.
    [[nodiscard]] const ChartTipText &tip() const { return m_hover.tip; }

    /// Goes this many bars back in history.
    Q_INVOKABLE void scroll(int n);
    Q_INVOKABLE void hoverAt(double x);
    Q_INVOKABLE void unhover();

Q_SIGNALS:
    void modelChanged();
    void countChanged();
    void pageChanged();
    void opacitiesChanged();
    void hoveredChanged();
    void tipChanged();
    /// The bars come into sight, and are to grow one after the other.
    void appeared();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    /// Arrows hover the next bar, Page Up and Page Down turn pages, Home and End go to either end.
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// What depends on the bar that is hovered.
    struct Hover {
        int index = -1;
        QList<double> opacities;
        ChartTipText tip;
    };

    [[nodiscard]] const QList<Bar> &bars() const { return m_model->series().bars; }
    [[nodiscard]] bool isPeriod(qsizetype index) const;
    [[nodiscard]] QList<ChartColumn> makeColumns(double scale) const;
    [[nodiscard]] ChartTipText makeTip(qsizetype index) const;
    [[nodiscard]] Hover makeHover() const;
    void rebuild();
    void updateHover();
    void announce(const Hover &before);
    void appear();
    /// Hovers the next bar, older for a negative direction; beyond the page's edge the page moves.
    void select(int direction);
    void turnPage(int pages);
    void toOldest();
    void toNewest();
    void hoverBar(qsizetype index);

    QPointer<WidgetModel> m_model;
    ChartLayout m_layout {0};
    QList<ChartColumn> m_columns;
    QString m_reference;
    Hover m_hover;
    bool m_tabChanged = false; ///< the next page is the first of another tab
};
