#include "X11.h"

#include <QGuiApplication>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace kova {

namespace {

constexpr uint32_t sourceUserRequest = 2;

using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

struct Free {
    void operator()(void *memory) const { std::free(memory); }
};

template <typename Reply> using Owned = std::unique_ptr<Reply, Free>;

xcb_atom_t atom(xcb_connection_t *connection, const char *name) {
    const auto cookie = xcb_intern_atom(connection, false, uint16_t(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

// Returns the server's current time, which it reports with the change of a property.
xcb_timestamp_t serverTime(xcb_connection_t *connection, xcb_window_t root) {
    const xcb_window_t window = xcb_generate_id(connection);
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                        nullptr);
    xcb_flush(connection);
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(connection)}) {
        if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
            time = reinterpret_cast<const xcb_property_notify_event_t *>(event.get())->time;
            break;
        }
    }
    xcb_destroy_window(connection, window);
    return time;
}

} // namespace

// Uses its own connection, so that waiting for the time cannot consume an event of Qt's.
void activateX11Window(WId window) {
    const Connection connection(xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0) {
        return;
    }
    const auto id = xcb_window_t(window);
    const Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), id), nullptr));
    if (!tree) {
        return;
    }
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = id;
    message.type = atom(connection.get(), "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = sourceUserRequest;
    message.data.data32[1] = serverTime(connection.get(), tree->root);
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, id,
                        atom(connection.get(), "_NET_WM_USER_TIME"), XCB_ATOM_CARDINAL, 32, 1,
                        &message.data.data32[1]);
    xcb_send_event(connection.get(), false, tree->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(connection.get());
}

void describeX11Window(WId window) {
    const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11) {
        return;
    }
    const auto set = [connection = x11->connection(), window](xcb_atom_t property, xcb_atom_t type,
                                                              const QByteArray &value) {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, xcb_window_t(window), property, type, 8,
                            uint32_t(value.size()), value.constData());
    };
    const QByteArray name = QGuiApplication::desktopFileName().toLatin1() + '\0'; // two terminated strings
    set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, name + name);
    set(atom(x11->connection(), "_GTK_THEME_VARIANT"), atom(x11->connection(), "UTF8_STRING"), "dark");
}

bool hasX11Tray() {
    int screen = 0;
    const Connection connection(xcb_connect(nullptr, &screen), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0) {
        return false;
    }
    const QByteArray name = "_NET_SYSTEM_TRAY_S" + QByteArray::number(screen);
    const auto cookie = xcb_get_selection_owner(connection.get(), atom(connection.get(), name.constData()));
    const Owned<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection.get(), cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace kova
