#include "widget/views/HistoryChart.h"

#include "widget/text/Strings.h"
#include "widget/views/theme/Metrics.h"
#include <algorithm>
#include <cmath>
#include <QFontMetricsF>
#include <QGuiApplication>

namespace {

constexpr double labelSpacing = 14;
constexpr double widestClearance = 24;
constexpr double apart = 2;

/// Of which many labels one is shown, so that the widest has room.
qsizetype labelStride(const QList<Bar> &bars, double cell)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(qRound(HistoryChart::labelSize() * Metrics::textScale()));
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (const Bar &bar : bars) {
        widest = std::max(widest, metrics.horizontalAdvance(bar.label));
    }
    const double stride = std::ceil((widest + labelSpacing) / cell);
    return static_cast<qsizetype>(
        std::max(1.0, std::min(stride, static_cast<double>(bars.size()))));
}

/// What a tip says of a bar, wherever it stands.
ChartTipText tipText(const Bar &bar, const WidgetModel &model)
{
    ChartTipText tip;
    tip.title = bar.longLabel;
    tip.cost = model.strings()->money(bar.cost);
    tip.tokens = model.t(QStringLiteral("tokens"), {Strings::tokens(bar.tokens)});
    tip.spoken = tip.title % u", " % tip.cost % u", " % tip.tokens;
    return tip;
}

} // namespace

void HistoryChart::setModel(WidgetModel *model)
{
    if (m_model) {
        m_model->disconnect(this);
        m_model->hover().disconnect(this);
    }
    m_model = model;
    Q_EMIT modelChanged();
    if (!m_model) {
        return;
    }
    connect(m_model, &WidgetModel::tabChanged, this, [this] { m_tabChanged = true; });
    connect(m_model, &WidgetModel::seriesChanged, this, &HistoryChart::rebuild);
    connect(&m_model->hover(), &HoverState::xChanged, this, [this] {
        const auto index = m_layout.index(m_model->hover().x(), bars());
        if (index.value_or(-1) != m_hover.index) {
            updateHover();
        }
    });
    rebuild();
}

void HistoryChart::scroll(int n)
{
    m_model->move(n);
}

void HistoryChart::hoverAt(double x)
{
    m_model->hover().setX(x);
}

void HistoryChart::unhover()
{
    m_model->hover().setX({});
}

void HistoryChart::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (!m_model || (change != ItemVisibleHasChanged && change != ItemActiveFocusHasChanged)) {
        return;
    }
    if (!data.boolValue) {
        // The pointer may rest on a bar although the keyboard has gone.
        if (change == ItemVisibleHasChanged || m_model->hover().byKeyboard()) {
            unhover();
        }
    } else if (change == ItemVisibleHasChanged) {
        appear();
    }
}

void HistoryChart::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        return select(-1);
    case Qt::Key_Right:
        return select(1);
    case Qt::Key_PageUp:
        return turnPage(1);
    case Qt::Key_PageDown:
        return turnPage(-1);
    case Qt::Key_Home:
        return toOldest();
    case Qt::Key_End:
        return toNewest();
    default:
        event->ignore();
    }
}

bool HistoryChart::isPeriod(qsizetype index) const
{
    return index >= 0 && index < bars().size() && !bars().at(index).isEmpty;
}

QList<ChartColumn> HistoryChart::makeColumns(double scale) const
{
    const Series &series = m_model->series();
    const qsizetype stride = labelStride(series.bars, m_layout.cell());
    const qsizetype newest = series.bars.size() - 1;
    QList<ChartColumn> columns;
    for (qsizetype i = 0; i <= newest; ++i) {
        const Bar &bar = series.bars.at(i);
        ChartColumn column;
        column.x = m_layout.cell() * static_cast<double>(i);
        column.width = m_layout.slot;
        column.height = ChartLayout::height(bar, scale);
        column.padding = bar.isEmpty;
        column.label = bar.label;
        column.labelShown = (newest - i) % stride == 0;
        column.spoken = bar.isEmpty ? QString() : tipText(bar, *m_model).spoken;
        column.parts = barParts(bar, series.legend);
        columns.append(column);
    }
    return columns;
}

ChartTipText HistoryChart::makeTip(qsizetype index) const
{
    ChartTipText tip = tipText(bars().at(index), *m_model);
    tip.x = m_layout.centre(index);
    tip.y = Metrics::areaHeight() - m_columns.at(index).height;
    tip.clearance = std::min(m_layout.slot * 0.5 + apart, widestClearance);
    return tip;
}

HistoryChart::Hover HistoryChart::makeHover() const
{
    const std::optional<qsizetype> index = m_layout.index(m_model->hover().x(), bars());
    Hover hover;
    hover.index = static_cast<int>(index.value_or(-1));
    hover.tip = index ? makeTip(*index) : m_hover.tip;
    for (qsizetype i = 0; i < bars().size(); ++i) {
        hover.opacities.append(ChartLayout::opacity(bars().at(i), i, index));
    }
    return hover;
}

void HistoryChart::rebuild()
{
    const int countBefore = count();
    const bool hadBars = !m_columns.isEmpty() && !m_columns.constLast().padding;
    const double scale = ChartLayout::scale(bars());
    m_layout = ChartLayout(bars().size());
    m_columns = makeColumns(scale);
    m_reference = bars().isEmpty() ? QString() : m_model->strings()->money(scale);
    const Hover before = std::exchange(m_hover, makeHover());
    // First, so that delegates without a bar are gone when the others look at theirs.
    if (count() != countBefore) {
        Q_EMIT countChanged();
    }
    Q_EMIT pageChanged();
    announce(before);
    if (std::exchange(m_tabChanged, false) || !hadBars) {
        appear();
    }
}

void HistoryChart::updateHover()
{
    announce(std::exchange(m_hover, makeHover()));
}

/// A tip that comes into sight is at its place already.
void HistoryChart::announce(const Hover &before)
{
    if (m_hover.tip != before.tip) {
        Q_EMIT tipChanged();
    }
    if (m_hover.opacities != before.opacities) {
        Q_EMIT opacitiesChanged();
    }
    if (m_hover.index != before.index) {
        Q_EMIT hoveredChanged();
    }
}

void HistoryChart::appear()
{
    if (isVisible() && !m_columns.isEmpty()) {
        Q_EMIT appeared();
    }
}

void HistoryChart::select(int direction)
{
    if (m_hover.index < 0) {
        hoverBar(bars().size() - 1);
    } else if (isPeriod(m_hover.index + direction)) {
        hoverBar(m_hover.index + direction);
    } else {
        m_model->move(-direction);
    }
}

void HistoryChart::turnPage(int pages)
{
    m_model->move(pages * bars().size());
}

void HistoryChart::toOldest()
{
    m_model->move(m_model->series().maxOffset - m_model->offset());
    const auto oldest = std::ranges::find(bars(), false, &Bar::isEmpty);
    hoverBar(std::distance(bars().begin(), oldest));
}

void HistoryChart::toNewest()
{
    m_model->move(-m_model->offset());
    hoverBar(bars().size() - 1);
}

void HistoryChart::hoverBar(qsizetype index)
{
    if (isPeriod(index)) {
        m_model->hover().setX(m_layout.centre(index), HoverState::By::Keyboard);
    }
}

#include "moc_HistoryChart.cpp"
