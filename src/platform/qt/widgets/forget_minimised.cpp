#include "platform/qt/widgets/forget_minimised.h"

#include <QGuiApplication>
#include <QWidget>

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#endif

namespace velmora {

namespace {

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

void tellWindowManager(const QWidget& window) {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr) return;
  constexpr std::uint32_t words = 9;
  constexpr std::size_t stateWord = 2;
  xcb_connection_t* display = x11->connection();
  const auto id = static_cast<xcb_window_t>(window.winId());
  const auto asked = xcb_get_property(display, 0, id, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 0, words);
  const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
      xcb_get_property_reply(display, asked, nullptr), std::free);
  if (!reply || reply->format != 32 || reply->length != words) return;
  const std::span hints(static_cast<std::uint32_t*>(xcb_get_property_value(reply.get())), words);
  hints[stateWord] = 1;  // normal
  xcb_change_property(display, XCB_PROP_MODE_REPLACE, id, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32, words,
                      hints.data());
}

#else

void tellWindowManager(const QWidget&) {}

#endif

}  // namespace

void forgetMinimised(QWidget& window) {
  if (window.isVisible() || !window.isMinimized()) return;
  tellWindowManager(window);
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
}

}  // namespace velmora
