#include "widget/platform/XServer.h"

#include <algorithm>
#include <string>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

namespace {

xcb_window_t rootOf(xcb_connection_t *connection, int screen)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (screen-- > 0) {
        xcb_screen_next(&screens);
    }
    return screens.data->root;
}

} // namespace

std::unique_ptr<XServer> XServer::open()
{
    int screen = 0;
    Connection connection(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(connection.get()) != 0) {
        return nullptr;
    }
    std::unique_ptr<XServer> server(new XServer(std::move(connection), screen));
    return server->speaksExtensions() ? std::move(server) : nullptr;
}

XServer::XServer(Connection connection, int screen)
    : m_connection(std::move(connection))
    , m_root(rootOf(m_connection.get(), screen))
{
    internNames(screen);
}

/// Neither extension answers anything before it is told which version is meant.
bool XServer::speaksExtensions() const
{
    const auto has = [this](xcb_extension_t &extension) {
        const auto *const found = xcb_get_extension_data(connection(), &extension);
        return found != nullptr && found->present != 0;
    };
    return has(xcb_xfixes_id) && has(xcb_input_id)
        && answer(xcb_xfixes_query_version_reply, xcb_xfixes_query_version(connection(), 2, 0))
        && answer(xcb_input_xi_query_version_reply, xcb_input_xi_query_version(connection(), 2, 2));
}

void XServer::internNames(int screen)
{
    const std::string number = std::to_string(screen);
    const std::array<std::string, nameCount> names {"_NET_WM_CM_S" + number,
        "_NET_SYSTEM_TRAY_S" + number, "_NET_CURRENT_DESKTOP", "_NET_SUPPORTING_WM_CHECK",
        "_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING", "_NET_WM_STRUT", "_NET_WM_STRUT_PARTIAL",
        "_NET_WM_DESKTOP", "_NET_WM_STATE", "_NET_WM_STATE_HIDDEN", "_GTK_FRAME_EXTENTS",
        "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP", "_NET_WM_WINDOW_TYPE_DOCK",
        "_NET_WM_WINDOW_TYPE_MENU", "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
        "_NET_WM_WINDOW_TYPE_POPUP_MENU", "_NET_WM_WINDOW_TYPE_COMBO",
        "_NET_WM_WINDOW_TYPE_TOOLTIP", "_NET_WM_WINDOW_TYPE_NOTIFICATION",
        "_NET_WM_WINDOW_TYPE_DND"};
    std::array<xcb_intern_atom_cookie_t, nameCount> cookies {};
    std::ranges::transform(names, cookies.begin(), [this](const std::string &name) {
        return xcb_intern_atom(connection(), 0, static_cast<uint16_t>(name.size()), name.data());
    });
    std::ranges::transform(cookies, m_atoms.begin(), [this](xcb_intern_atom_cookie_t cookie) {
        const auto reply = answer(xcb_intern_atom_reply, cookie);
        return reply ? reply->atom : xcb_atom_t {XCB_ATOM_NONE};
    });
}

xcb_atom_t XServer::atom(XName name) const
{
    return m_atoms.at(static_cast<size_t>(name));
}

std::vector<uint32_t> XServer::property(xcb_window_t window, XName name) const
{
    constexpr uint32_t enough = 1U << 16U;
    const auto reply = answer(xcb_get_property_reply,
        xcb_get_property(
            connection(), 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, enough));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto *const first = static_cast<const uint32_t *>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::optional<uint32_t> XServer::number(xcb_window_t window, XName name) const
{
    const auto values = property(window, name);
    return values.empty() ? std::nullopt : std::optional(values.front());
}
