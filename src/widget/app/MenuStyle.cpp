#include "widget/app/MenuStyle.h"

#include "widget/app/menuIcon.h"
#include <QStyleOptionMenuItem>

namespace {

/// Room at the end of an item, for the mark and around it.
constexpr int markRoom = 28;
constexpr int markSide = 16;

/// The item, if it is one whose mark is drawn here.
const QStyleOptionMenuItem *marked(const QStyleOption *option)
{
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    const bool ours = item != nullptr && !item->icon.isNull()
        && item->checkType != QStyleOptionMenuItem::NotCheckable;
    return ours ? item : nullptr;
}

QIcon::Mode mode(QStyle::State state)
{
    if (!state.testFlag(QStyle::State_Enabled)) {
        return QIcon::Disabled;
    }
    return state.testFlag(QStyle::State_Selected) ? QIcon::Active : QIcon::Normal;
}

} // namespace

void MenuStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
    const QWidget *widget) const
{
    const QStyleOptionMenuItem *item = element == CE_MenuItem ? marked(option) : nullptr;
    if (item == nullptr) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    QStyleOptionMenuItem plain = *item;
    plain.checkType = QStyleOptionMenuItem::NotCheckable;
    plain.checked = false;
    QProxyStyle::drawControl(element, &plain, painter, widget);
    if (item->checked) {
        QRect mark(0, 0, markSide, markSide);
        mark.moveCenter({item->rect.right() - markRoom / 2, item->rect.center().y()});
        menuIcon(QLatin1String("check"))
            .paint(painter, visualRect(item->direction, item->rect, mark), Qt::AlignCenter,
                mode(item->state));
    }
}

QSize MenuStyle::sizeFromContents(
    ContentsType type, const QStyleOption *option, const QSize &size, const QWidget *widget) const
{
    const QSize needed = QProxyStyle::sizeFromContents(type, option, size, widget);
    const bool hasMark = type == CT_MenuItem && marked(option) != nullptr;
    return hasMark ? needed + QSize(markRoom, 0) : needed;
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
    QStyleHintReturn *returned) const
{
    // On a dark menu the etching is brighter than the text.
    return hint == SH_EtchDisabledText ? 0 : QProxyStyle::styleHint(hint, option, widget, returned);
}

#include "moc_MenuStyle.cpp"
