#include "platform/qt/services/come_forward.h"

#include <QApplication>
#include <QByteArray>
#include <QDialog>
#include <QList>
#include <QTimer>
#include <chrono>

#include "platform/qt/services/wayland.h"

namespace velmora {

namespace {

void hideAndShow(QWidget& window) {
  const bool isAtWork = QApplication::activeWindow() != nullptr || QApplication::activeModalWidget() != nullptr;
  if (isAtWork || !window.isVisible()) return;
  QList<QWidget*> hidden = {&window};
  for (QDialog* child : window.findChildren<QDialog*>(Qt::FindDirectChildrenOnly)) {
    if (child->isVisible()) hidden.prepend(child);
  }
  for (QWidget* each : hidden) each->hide();
  while (!hidden.isEmpty()) hidden.takeLast()->show();
}

}  // namespace

void appearAnew(QWidget& window) {
  constexpr std::chrono::milliseconds patience(400);
  if (onWayland()) QTimer::singleShot(patience, &window, [&window] { hideAndShow(window); });
}

void useActivationToken(const QByteArray& token) {
  if (!token.isEmpty()) qputenv(activationTokenVariable, token);
  QTimer::singleShot(0, [] { qunsetenv(activationTokenVariable); });  // also while a check goes on
}

}  // namespace velmora

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <algorithm>

#include "platform/qt/services/x11.h"

namespace velmora {

/// A window manager may leave a window on the workspace where it is, which the user has left.
void comeForward(const QWidget& widget) {
  xcb_connection_t* display = x11Display();
  if (display == nullptr) return;
  const auto window = static_cast<xcb_window_t>(widget.winId());
  const auto now = x11Numbers(display, x11Root(display), x11Atom(display, "_NET_CURRENT_DESKTOP"));
  const auto place = x11Numbers(display, window, x11Atom(display, "_NET_WM_DESKTOP"));
  constexpr std::uint32_t everywhere = 0xFFFFFFFF;
  if (now.size() == 1 && place.size() == 1 && place != now && place.front() != everywhere) {
    x11Ask(display, window, "_NET_WM_DESKTOP", {now.front(), forTheUser, 0, 0, 0});
  }
  x11Ask(display, window, "_NET_ACTIVE_WINDOW", {forTheUser, XCB_CURRENT_TIME, 0, 0, 0});
}

/// The text goes to the root window in pieces of twenty bytes, its end included.
void endStartUpNotice(const QByteArray& identifier) {
  xcb_connection_t* display = x11Display();
  if (display == nullptr || identifier.isEmpty()) return;
  QByteArray quoted = identifier.left(1000);
  quoted.replace('\\', "\\\\").replace('"', "\\\"");
  const QByteArray text = "remove: ID=\"" + quoted + "\"";
  const xcb_window_t root = x11Root(display);
  const xcb_window_t sender = xcb_generate_id(display);
  xcb_create_window(display, 0, sender, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                    nullptr);
  xcb_client_message_event_t piece{};
  piece.response_type = XCB_CLIENT_MESSAGE;
  piece.format = 8;
  piece.window = sender;
  piece.type = x11Atom(display, "_NET_STARTUP_INFO_BEGIN");
  constexpr qsizetype pieceSize = sizeof piece.data.data8;
  for (qsizetype sent = 0; sent <= text.size(); sent += pieceSize) {
    QByteArray bytes = text.mid(sent, pieceSize);
    bytes.resize(pieceSize, '\0');
    std::copy(bytes.begin(), bytes.end(), piece.data.data8);
    xcb_send_event(display, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE, reinterpret_cast<const char*>(&piece));
    piece.type = x11Atom(display, "_NET_STARTUP_INFO");
  }
  xcb_destroy_window(display, sender);
  xcb_flush(display);
}

}  // namespace velmora

#else

namespace velmora {

void comeForward(const QWidget& /*window*/) {}

void endStartUpNotice(const QByteArray& /*identifier*/) {}

}  // namespace velmora
#endif
