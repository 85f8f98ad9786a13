#include "desktop/support/TestWindow.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace quorvane {
namespace {

template <class T>
auto owned(T* reply) {
    return std::unique_ptr<T, decltype(&std::free)>(reply, &std::free);
}

xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    return owned(xcb_intern_atom_reply(connection, cookie, nullptr))->atom;
}

xcb_connection_t* connected() {
    auto* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection)) throw std::runtime_error("no X server for the test's window");
    return connection;
}

}  // namespace

TestWindow::TestWindow(const Properties& properties)
    : connection_(connected()), root_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root),
      window_(xcb_generate_id(connection_)) {
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, root_, 10, 10, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (!properties.instance.empty() || !properties.wmClass.empty()) setClass(properties.instance, properties.wmClass);
    if (!properties.title.empty()) setText("_NET_WM_NAME", "UTF8_STRING", properties.title);
    if (!properties.oldTitle.empty()) setText("WM_NAME", "STRING", properties.oldTitle);
    if (!properties.gtkApplicationId.empty())
        setText("_GTK_APPLICATION_ID", "UTF8_STRING", properties.gtkApplicationId);
    if (!properties.machine.empty()) setText("WM_CLIENT_MACHINE", "STRING", properties.machine);
    if (properties.pid) {
        const auto pid = static_cast<std::uint32_t>(*properties.pid);
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom(connection_, "_NET_WM_PID"),
                            XCB_ATOM_CARDINAL, 32, 1, &pid);
    }
    show();
}

TestWindow::~TestWindow() {
    xcb_disconnect(connection_);
}

void TestWindow::activate() {
    constexpr std::uint32_t fromPager = 2;
    tellWindowManager("_NET_ACTIVE_WINDOW", fromPager);
}

void TestWindow::iconify() {
    constexpr std::uint32_t iconicState = 3;
    tellWindowManager("WM_CHANGE_STATE", iconicState);
}

void TestWindow::setClass(const std::string& instance, const std::string& wmClass) {
    setText("WM_CLASS", "STRING", instance + '\0' + wmClass + '\0');
}

void TestWindow::grabPointer() {
    const auto cookie = xcb_grab_pointer(connection_, 0, window_, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const auto reply = owned(xcb_grab_pointer_reply(connection_, cookie, nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) throw std::runtime_error("the pointer is not granted");
}

void TestWindow::hide() {
    xcb_unmap_window(connection_, window_);
    xcb_flush(connection_);
}

void TestWindow::show() {
    xcb_map_window(connection_, window_);
    xcb_flush(connection_);
}

void TestWindow::destroy() {
    xcb_destroy_window(connection_, window_);
    xcb_flush(connection_);
}

bool TestWindow::hasFocus() const {
    const auto cookie = xcb_get_property(connection_, 0, root_, atom(connection_, "_NET_ACTIVE_WINDOW"),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const auto reply = owned(xcb_get_property_reply(connection_, cookie, nullptr));
    return xcb_get_property_value_length(reply.get()) >= 4 &&
           *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get())) == window_;
}

void TestWindow::setText(const char* property, const char* type, const std::string& value) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom(connection_, property),
                        atom(connection_, type), 8, static_cast<std::uint32_t>(value.size()), value.data());
    xcb_flush(connection_);
}

void TestWindow::tellWindowManager(const char* message, std::uint32_t data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window_;
    event.type = atom(connection_, message);
    event.data.data32[0] = data;
    xcb_send_event(connection_, 0, root_, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    // Windows of different connections take turns; when the server answers, it has passed the message on.
    owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

}  // namespace quorvane
