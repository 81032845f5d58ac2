#include "widget/platform/sendRequests.h"

#include <QGuiApplication>
#include <xcb/xcb.h>

void sendRequests()
{
    const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // Drawing without a display has the interface, too, and no connection.
    if (x11 != nullptr && x11->connection() != nullptr) {
        xcb_flush(x11->connection());
    }
}
