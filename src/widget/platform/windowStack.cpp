#include "widget/platform/windowStack.h"

#include <algorithm>
#include <QRect>

namespace {

constexpr uint32_t allDesktops = 0xFFFFFFFF;

/// Window managers leave their list behind when they crash; their window goes with them.
bool isManaged(const XServer &server)
{
    const auto manager = server.number(server.root(), XName::ManagerCheck);
    return manager && server.number(*manager, XName::ManagerCheck) == manager;
}

/// The windows among which this one stands, lowest first.
std::vector<xcb_window_t> stacking(const XServer &server, xcb_window_t window)
{
    auto managed = server.property(server.root(), XName::ClientListStacking);
    if (isManaged(server) && std::ranges::find(managed, window) != managed.end()) {
        return managed;
    }
    const auto tree =
        server.answer(xcb_query_tree_reply, xcb_query_tree(server.connection(), server.root()));
    if (!tree) {
        return {};
    }
    const xcb_window_t *const first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

/// On the root window, without an invisible border that a program draws around itself and without
/// what a window manager draws.
QRect frameOf(const XServer &server, xcb_window_t window)
{
    const auto geometry =
        server.answer(xcb_get_geometry_reply, xcb_get_geometry(server.connection(), window));
    const auto origin = server.answer(xcb_translate_coordinates_reply,
        xcb_translate_coordinates(server.connection(), window, server.root(), 0, 0));
    if (!geometry || !origin) {
        return {};
    }
    const QRect whole(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
    const auto border = server.property(window, XName::FrameExtents);
    if (border.size() != 4) {
        return whole;
    }
    const std::vector<int> widths(border.begin(), border.end()); // left, right, top, bottom
    return whole.adjusted(widths[0], widths[2], -widths[1], -widths[3]);
}

XReply<xcb_get_window_attributes_reply_t> attributesOf(const XServer &server, xcb_window_t window)
{
    return server.answer(
        xcb_get_window_attributes_reply, xcb_get_window_attributes(server.connection(), window));
}

/// Window managers need not unmap what is minimised or on another desktop.
bool isShown(const XServer &server, xcb_window_t window)
{
    const auto attributes = attributesOf(server, window);
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) {
        return false;
    }
    const auto states = server.property(window, XName::WindowState);
    if (std::ranges::find(states, server.atom(XName::StateHidden)) != states.end()) {
        return false;
    }
    const auto desktop = server.number(window, XName::WindowDesktop);
    return !desktop || desktop == allDesktops
        || desktop == server.number(server.root(), XName::CurrentDesktop).value_or(*desktop);
}

/// Windows that keep out of a window manager's hands are menus and the like, too.
bool liesOverInPassing(const XServer &server, xcb_window_t window)
{
    const auto attributes = attributesOf(server, window);
    if (!attributes || attributes->override_redirect != 0
        || attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY) {
        return true;
    }
    const auto types = server.property(window, XName::WindowType);
    return std::ranges::any_of(types, [&](xcb_atom_t type) {
        for (auto name = static_cast<int>(XName::FirstPassingType);
             name <= static_cast<int>(XName::LastPassingType); ++name) {
            if (type == server.atom(static_cast<XName>(name))) {
                return true;
            }
        }
        return false;
    });
}

} // namespace

bool isWindowCovered(const XServer &server, xcb_window_t window)
{
    const QRect frame = frameOf(server, window);
    if (frame.isEmpty()) {
        return false; // no such window
    }
    if (!isShown(server, window)) {
        return true;
    }
    const auto windows = stacking(server, window);
    const auto self = std::ranges::find(windows, window);
    return self != windows.end() && std::any_of(self + 1, windows.end(), [&](xcb_window_t other) {
        return !liesOverInPassing(server, other) && isShown(server, other)
            && frameOf(server, other).intersects(frame);
    });
}
