#include "widget/views/PanelActions.h"

PanelActions::PanelActions(QObject *parent)
    : QObject(parent)
{
}

#include "moc_PanelActions.cpp"
