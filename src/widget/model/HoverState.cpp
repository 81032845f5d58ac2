#include "widget/model/HoverState.h"

#include "moc_HoverState.cpp"
