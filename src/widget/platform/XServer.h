#pragma once

#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

struct XReplyDeleter {
    void operator()(void *reply) const { std::free(reply); }
};
/// What the X server answered; nothing where it could not.
template <typename Content> using XReply = std::unique_ptr<Content, XReplyDeleter>;

struct XDisconnect {
    void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
};

/// The names that are agreed on between programs and window managers, as far as they are asked for.
enum class XName {
    CompositorSelection,
    TraySelection,
    CurrentDesktop,
    ManagerCheck,
    ClientList,
    ClientListStacking,
    Strut,
    StrutPartial,
    WindowDesktop,
    WindowState,
    StateHidden,
    FrameExtents,
    WindowType,
    FirstPassingType, ///< this type of window and those that follow lie over others in passing
    LastPassingType = FirstPassingType + 8,
};

/// A connection to the X server of the program's display. Once it breaks, every question has an
/// empty answer.
class XServer final {
public:
    /// None where there is no such server, or one without the extensions that are in use.
    [[nodiscard]] static std::unique_ptr<XServer> open();

    [[nodiscard]] xcb_connection_t *connection() const { return m_connection.get(); }
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    [[nodiscard]] xcb_atom_t atom(XName name) const;

    /// Waits for the answer to a question; both are functions of xcb.
    template <typename Content, typename Cookie>
    [[nodiscard]] XReply<Content> answer(
        Content *(*take)(xcb_connection_t *, Cookie, xcb_generic_error_t **), Cookie cookie) const
    {
        return XReply<Content>(take(connection(), cookie, nullptr));
    }
    /// The numbers that a window has under a name.
    [[nodiscard]] std::vector<uint32_t> property(xcb_window_t window, XName name) const;
    /// The first of them.
    [[nodiscard]] std::optional<uint32_t> number(xcb_window_t window, XName name) const;

private:
    using Connection = std::unique_ptr<xcb_connection_t, XDisconnect>;
    static constexpr auto nameCount = static_cast<size_t>(XName::LastPassingType) + 1;

    XServer(Connection connection, int screen);
    [[nodiscard]] bool speaksExtensions() const;
    void internNames(int screen);

    Connection m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    std::array<xcb_atom_t, nameCount> m_atoms {};
};
