#include "widget/model/LegendItem.h"

#include "moc_LegendItem.cpp"
