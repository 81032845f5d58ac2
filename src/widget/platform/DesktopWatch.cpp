#include "widget/platform/DesktopWatch.h"

#include "widget/platform/screenBars.h"
#include "widget/platform/windowStack.h"
#include "widget/platform/XServer.h"
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

/// The connection, and what was last told over it. Once it breaks nothing more is told.
class DesktopWatch::Session {
public:
    Session(DesktopWatch &watch, std::unique_ptr<XServer> server);

    bool composited = true;
    bool hasTray = false;
    std::vector<ScreenBar> bars;

    [[nodiscard]] bool isCovered(xcb_window_t window);
    void selectPresses(bool on);

private:
    [[nodiscard]] bool watchSelection(XName selection);
    void takeEvents();
    void take(const xcb_generic_event_t &event);
    void takeSelection(const xcb_xfixes_selection_notify_event_t &event);
    void takeDesktop();
    void takeBars();
    [[nodiscard]] bool isAboutBars(xcb_atom_t atom) const;

    DesktopWatch &m_watch;
    std::unique_ptr<XServer> m_server;
    std::optional<quint32> m_desktop;
    QSocketNotifier m_arrived;
    QTimer m_later; ///< for events that came with an answer, of which no arrival is told
};

namespace {

/// Turning a wheel comes as presses of these.
bool isWheel(quint32 button)
{
    return button >= 4 && button <= 7;
}

std::unique_ptr<XServer> serverOfProgram()
{
    return QGuiApplication::platformName() == u"xcb" ? XServer::open() : nullptr;
}

} // namespace

DesktopWatch::Session::Session(DesktopWatch &watch, std::unique_ptr<XServer> server)
    : m_watch(watch)
    , m_server(std::move(server))
    , m_arrived(xcb_get_file_descriptor(m_server->connection()), QSocketNotifier::Read)
{
    m_later.setSingleShot(true);
    connect(&m_arrived, &QSocketNotifier::activated, &watch, [this] { takeEvents(); });
    connect(&m_later, &QTimer::timeout, &watch, [this] { takeEvents(); });
    const quint32 mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(
        m_server->connection(), m_server->root(), XCB_CW_EVENT_MASK, &mask);
    composited = watchSelection(XName::CompositorSelection);
    hasTray = watchSelection(XName::TraySelection);
    m_desktop = m_server->number(m_server->root(), XName::CurrentDesktop);
    bars = screenBars(*m_server);
    m_later.start();
}

/// Has changes of the owner told from now on; whether there is one now.
bool DesktopWatch::Session::watchSelection(XName selection)
{
    const xcb_atom_t atom = m_server->atom(selection);
    xcb_xfixes_select_selection_input(m_server->connection(), m_server->root(), atom,
        XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
            | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const auto reply = m_server->answer(
        xcb_get_selection_owner_reply, xcb_get_selection_owner(m_server->connection(), atom));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

bool DesktopWatch::Session::isCovered(xcb_window_t window)
{
    m_later.start();
    return isWindowCovered(*m_server, window);
}

void DesktopWatch::Session::selectPresses(bool on)
{
    const struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } selection {{XCB_INPUT_DEVICE_ALL_MASTER, 1},
        on ? quint32 {XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS} : 0};
    xcb_input_xi_select_events(m_server->connection(), m_server->root(), 1, &selection.head);
    xcb_flush(m_server->connection());
    m_later.start();
}

void DesktopWatch::Session::takeEvents()
{
    while (const XReply<xcb_generic_event_t> event {xcb_poll_for_event(m_server->connection())}) {
        take(*event);
    }
    if (xcb_connection_has_error(m_server->connection()) != 0) {
        m_arrived.setEnabled(false); // its end could be read for ever
    }
}

void DesktopWatch::Session::take(const xcb_generic_event_t &event)
{
    const int type = event.response_type & 0x7F; // without the mark of events sent by programs
    const auto *const fixes = xcb_get_extension_data(m_server->connection(), &xcb_xfixes_id);
    const auto *const input = xcb_get_extension_data(m_server->connection(), &xcb_input_id);
    if (fixes == nullptr || input == nullptr) {
        return; // the connection broke while events were waiting
    }
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
        if (change.atom == m_server->atom(XName::CurrentDesktop)) {
            takeDesktop();
        } else if (isAboutBars(change.atom)) {
            takeBars();
        }
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        takeBars(); // the whole screen has another size
    } else if (type == fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY) {
        takeSelection(reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(event));
    } else if (type == XCB_GE_GENERIC) {
        const auto &press = reinterpret_cast<const xcb_input_raw_button_press_event_t &>(event);
        if (press.extension == input->major_opcode && press.event_type == XCB_INPUT_RAW_BUTTON_PRESS
            && !isWheel(press.detail)) {
            Q_EMIT m_watch.pressed();
        }
    }
}

void DesktopWatch::Session::takeSelection(const xcb_xfixes_selection_notify_event_t &event)
{
    const bool owned = event.owner != XCB_WINDOW_NONE;
    if (event.selection == m_server->atom(XName::CompositorSelection)) {
        if (std::exchange(composited, owned) != owned) {
            Q_EMIT m_watch.compositedChanged();
        }
    } else if (event.selection == m_server->atom(XName::TraySelection)) {
        if (std::exchange(hasTray, owned) != owned) {
            Q_EMIT m_watch.trayChanged();
        }
    }
}

void DesktopWatch::Session::takeDesktop()
{
    const auto desktop = m_server->number(m_server->root(), XName::CurrentDesktop);
    if (!desktop) {
        return; // the window manager has gone, and another may come to the same desktop
    }
    const auto earlier = std::exchange(m_desktop, desktop);
    if (earlier && earlier != desktop) {
        Q_EMIT m_watch.desktopSwitched();
    }
}

bool DesktopWatch::Session::isAboutBars(xcb_atom_t atom) const
{
    return atom == m_server->atom(XName::ClientList) || atom == m_server->atom(XName::Strut)
        || atom == m_server->atom(XName::StrutPartial);
}

void DesktopWatch::Session::takeBars()
{
    m_later.start();
    auto now = screenBars(*m_server);
    if (std::exchange(bars, now) != now) {
        Q_EMIT m_watch.barsChanged();
    }
}

DesktopWatch::DesktopWatch(QObject *parent)
    : QObject(parent)
{
    if (auto server = serverOfProgram()) {
        m_session = std::make_unique<Session>(*this, std::move(server));
    }
}

DesktopWatch::~DesktopWatch() = default;

bool DesktopWatch::composited() const
{
    return !m_session || m_session->composited;
}

bool DesktopWatch::hasTray() const
{
    return m_session && m_session->hasTray;
}

bool DesktopWatch::isCovered(quint32 window) const
{
    return m_session && m_session->isCovered(window);
}

QRect DesktopWatch::cleared(const QRect &monitor) const
{
    return m_session ? clearedOf(m_session->bars, monitor) : monitor;
}

void DesktopWatch::watchPresses(bool on)
{
    if (m_session) {
        m_session->selectPresses(on);
    }
}

#include "moc_DesktopWatch.cpp"
