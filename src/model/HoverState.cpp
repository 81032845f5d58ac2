#include "model/HoverState.h"

#include "moc_HoverState.cpp"
