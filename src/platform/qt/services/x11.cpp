#include "platform/qt/services/x11.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <QGuiApplication>
#include <algorithm>

namespace velmora {

xcb_connection_t* x11Display() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 != nullptr ? x11->connection() : nullptr;
}

int x11Screen() {
  char* host = nullptr;
  int number = 0;
  int screen = 0;
  if (xcb_parse_display(nullptr, &host, &number, &screen) == 0) return 0;
  const std::unique_ptr<char, decltype(&std::free)> owned(host, std::free);
  return screen;
}

xcb_window_t x11Root(xcb_connection_t* display) {
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(display));
  for (int i = x11Screen(); i > 0 && screens.rem > 1; --i) xcb_screen_next(&screens);
  return screens.data->root;
}

xcb_atom_t x11Atom(xcb_connection_t* display, const std::string& name) {
  const auto asked = xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(display, asked, nullptr), std::free);
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_NONE);
}

std::vector<std::uint32_t> x11Numbers(xcb_connection_t* display, xcb_window_t window, xcb_atom_t property) {
  constexpr std::uint32_t most = 10'000;
  const auto asked = xcb_get_property(display, 0, window, property, XCB_ATOM_ANY, 0, most);
  const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(display, asked, nullptr), std::free);
  if (!reply || reply->format != 32) return {};
  const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {values, values + reply->value_len};
}

void x11Ask(xcb_connection_t* display, xcb_window_t window, const std::string& type,
            const std::array<std::uint32_t, 5>& words) {
  xcb_client_message_event_t wish{};
  wish.response_type = XCB_CLIENT_MESSAGE;
  wish.format = 32;
  wish.window = window;
  wish.type = x11Atom(display, type);
  std::copy(words.begin(), words.end(), wish.data.data32);
  xcb_send_event(display, 0, x11Root(display),
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&wish));
  xcb_flush(display);
}

}  // namespace velmora
#endif
