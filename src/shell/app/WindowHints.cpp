#include "shell/app/WindowHints.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWidget>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace quorvane {
namespace {

xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
    const auto cookie = xcb_intern_atom(connection, false, static_cast<std::uint16_t>(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, void (*)(void*)> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr), std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_connection_t* connectionToX11() {
    const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return application ? application->connection() : nullptr;
}

}  // namespace

void WindowHints::watch(QWidget& window) {
    windows_.append(&window);
    window.installEventFilter(this);
    QObject::connect(&window, &QObject::destroyed, this, [this, gone = &window] { windows_.removeAll(gone); });
    if (window.isVisible()) tellWindowManager(window);
}

void WindowHints::setSkipTaskbar(bool skip) {
    skipTaskbar_ = skip;
    for (const auto* window : std::as_const(windows_))
        if (window->isVisible()) tellWindowManager(*window);
}

bool WindowHints::eventFilter(QObject* watched, QEvent* event) {
    // Qt writes the window's state anew when it maps the window, which comes right after this event.
    if (event->type() == QEvent::Show && skipTaskbar_)
        if (auto* window = qobject_cast<QWidget*>(watched))
            QMetaObject::invokeMethod(
                window,
                [this, window] {
                    if (windows_.contains(window) && window->isVisible()) tellWindowManager(*window);
                },
                Qt::QueuedConnection);
    return false;
}

void WindowHints::tellWindowManager(const QWidget& window) const {
    auto* connection = connectionToX11();
    if (!connection) return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = atom(connection, "_NET_WM_STATE");
    message.data.data32[0] = skipTaskbar_ ? 1 : 0;
    message.data.data32[1] = atom(connection, "_NET_WM_STATE_SKIP_TASKBAR");
    message.data.data32[2] = atom(connection, "_NET_WM_STATE_SKIP_PAGER");
    message.data.data32[3] = 1;  // from an application
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_send_event(connection, false, root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection);
}

}  // namespace quorvane
