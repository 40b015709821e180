#include "linux/window_hints.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string_view>

namespace plenzo {

namespace {

// Values of the Extended Window Manager Hints, 1.5.
constexpr std::uint32_t allDesktops = 0xFFFFFFFF;
constexpr std::uint32_t sourcePager = 2;

/// Null where there is no X server.
xcb_connection_t* xConnection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void setProperty(xcb_connection_t* connection, xcb_window_t window, std::string_view name,
                 xcb_atom_t type, const std::uint32_t* values, std::uint32_t count) {
    constexpr std::uint8_t bitsPerValue = 32;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(connection, name), type,
                        bitsPerValue, count, values);
}

using MessageData = std::array<std::uint32_t, 5>;

/// What is asked of the window manager goes to the root window.
void askWindowManager(xcb_connection_t* connection, xcb_window_t window, std::string_view name,
                      const MessageData& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(connection, name);
    std::ranges::copy(data, std::begin(message.data.data32));
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    constexpr std::uint32_t mask =
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_send_event(connection, 0, screen->root, mask, reinterpret_cast<const char*>(&message));
}

/// The window manager reads these when the window appears. The toolkit adds its own states.
void setInitialStates(xcb_connection_t* connection, xcb_window_t window) {
    const std::array<std::uint32_t, 3> states{atom(connection, "_NET_WM_STATE_STICKY"),
                                              atom(connection, "_NET_WM_STATE_SKIP_TASKBAR"),
                                              atom(connection, "_NET_WM_STATE_SKIP_PAGER")};
    setProperty(connection, window, "_NET_WM_STATE", XCB_ATOM_ATOM, states.data(), states.size());
    setProperty(connection, window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, &allDesktops, 1);
}

/// It may have taken them away, late, from a window that was hidden and is shown again at once.
void askForStates(xcb_connection_t* connection, xcb_window_t window) {
    constexpr std::uint32_t add = 1;
    askWindowManager(connection, window, "_NET_WM_STATE",
                     {add, atom(connection, "_NET_WM_STATE_ABOVE"),
                      atom(connection, "_NET_WM_STATE_STICKY"), sourcePager});
    askWindowManager(connection, window, "_NET_WM_STATE",
                     {add, atom(connection, "_NET_WM_STATE_SKIP_TASKBAR"),
                      atom(connection, "_NET_WM_STATE_SKIP_PAGER"), sourcePager});
    askWindowManager(connection, window, "_NET_WM_DESKTOP", {allDesktops, sourcePager});
}

} // namespace

void floatOnAllWorkspaces(QWindow& window) {
    xcb_connection_t* connection = xConnection();
    if (connection == nullptr) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    if (window.isVisible()) {
        askForStates(connection, id);
    } else {
        setInitialStates(connection, id);
    }
    xcb_flush(connection);
}

void activateIgnoringOtherPrograms(QWindow& window) {
    xcb_connection_t* connection = xConnection();
    if (connection == nullptr) {
        window.requestActivate();
        return;
    }
    askWindowManager(connection, static_cast<xcb_window_t>(window.winId()), "_NET_ACTIVE_WINDOW",
                     {sourcePager, XCB_CURRENT_TIME});
    xcb_flush(connection);
}

} // namespace plenzo
