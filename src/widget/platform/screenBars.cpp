#include "widget/platform/screenBars.h"

#include "widget/platform/XServer.h"
#include <algorithm>
#include <array>

namespace {

/// A property's numbers, by their order: how far each strip reaches in, and then from where to
/// where along its edge.
struct Strut {
    Qt::Edge edge;
    size_t depth;
    size_t from;
};

constexpr std::array struts {Strut {Qt::LeftEdge, 0, 4}, Strut {Qt::RightEdge, 1, 6},
    Strut {Qt::TopEdge, 2, 8}, Strut {Qt::BottomEdge, 3, 10}};
constexpr size_t plainCount = 4;
constexpr size_t partialCount = 12;

bool isUpright(Qt::Edge edge)
{
    return edge == Qt::LeftEdge || edge == Qt::RightEdge;
}

QRect stripOf(Qt::Edge edge, int depth, int from, int to, const QSize &whole)
{
    const int along = to - from + 1;
    switch (edge) {
    case Qt::LeftEdge:
        return {0, from, depth, along};
    case Qt::RightEdge:
        return {whole.width() - depth, from, depth, along};
    case Qt::TopEdge:
        return {from, 0, along, depth};
    default:
        return {from, whole.height() - depth, along, depth};
    }
}

/// The older property reserves a strip along the whole of an edge.
std::vector<int> strutsOf(const XServer &server, xcb_window_t window, const QSize &whole)
{
    auto told = server.property(window, XName::StrutPartial);
    if (told.size() != partialCount) {
        told = server.property(window, XName::Strut);
    }
    std::vector<int> numbers(told.begin(), told.end());
    if (numbers.size() == plainCount) {
        for (const Strut &strut : struts) {
            numbers.push_back(0);
            numbers.push_back((isUpright(strut.edge) ? whole.height() : whole.width()) - 1);
        }
    }
    return numbers.size() == partialCount ? numbers : std::vector<int>();
}

void tellOfChanges(const XServer &server, xcb_window_t window)
{
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(server.connection(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace

std::vector<ScreenBar> screenBars(const XServer &server)
{
    const auto root =
        server.answer(xcb_get_geometry_reply, xcb_get_geometry(server.connection(), server.root()));
    if (!root) {
        return {};
    }
    const QSize whole(root->width, root->height);
    std::vector<ScreenBar> bars;
    for (const xcb_window_t window : server.property(server.root(), XName::ClientList)) {
        const auto numbers = strutsOf(server, window, whole);
        if (numbers.empty()) {
            continue;
        }
        tellOfChanges(server, window);
        for (const auto &[edge, depth, from] : struts) {
            if (numbers[depth] > 0) {
                bars.push_back(
                    {edge, stripOf(edge, numbers[depth], numbers[from], numbers[from + 1], whole)});
            }
        }
    }
    xcb_flush(server.connection());
    return bars;
}

QRect clearedOf(const std::vector<ScreenBar> &bars, const QRect &monitor)
{
    constexpr int mistaken = 2; // pixels by which programs are wrong about where their bar ends
    QRect left = monitor;
    for (const ScreenBar &bar : bars) {
        const QRect taken = bar.strip.intersected(monitor);
        const bool upright = isUpright(bar.edge);
        const int along = upright ? taken.height() : taken.width();
        const bool isFartherIn =
            upright ? 2 * taken.width() > monitor.width() : 2 * taken.height() > monitor.height();
        // A strip reaches in from the edge of the whole screen, over the monitors before its bar's.
        if (taken.isEmpty() || along <= mistaken || isFartherIn) {
            continue;
        }
        switch (bar.edge) {
        case Qt::LeftEdge:
            left.setLeft(std::max(left.left(), taken.right() + 1));
            break;
        case Qt::RightEdge:
            left.setRight(std::min(left.right(), taken.left() - 1));
            break;
        case Qt::TopEdge:
            left.setTop(std::max(left.top(), taken.bottom() + 1));
            break;
        case Qt::BottomEdge:
            left.setBottom(std::min(left.bottom(), taken.top() - 1));
            break;
        }
    }
    return left;
}
