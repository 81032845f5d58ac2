#pragma once

#include "widget/platform/XServer.h"

/// Whether the user cannot see the whole of a top-level window: it is not mapped, minimised or on
/// another desktop, or another window lies over some of it. Docks, menus and the like do not count.
[[nodiscard]] bool isWindowCovered(const XServer &server, xcb_window_t window);
