#include "platform/qt/services/maximise.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <set>
#include <vector>

#include "platform/qt/services/x11.h"

// NOLINTBEGIN(cppcoreguidelines-owning-memory): objects are owned by their parents
#endif

namespace velmora {

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

namespace {

using namespace std::chrono_literals;

constexpr auto interval = 200ms;
constexpr auto patience = 10s;

/// Not a splash screen, nor what belongs to another window.
bool isMainWindowOf(xcb_connection_t* display, std::uint32_t process, xcb_window_t window) {
  if (x11Numbers(display, window, x11Atom(display, "_NET_WM_PID")) != std::vector{process}) return false;
  const auto kinds = x11Numbers(display, window, x11Atom(display, "_NET_WM_WINDOW_TYPE"));
  return x11Numbers(display, window, XCB_ATOM_WM_TRANSIENT_FOR).empty() &&
         (kinds.empty() || kinds.front() == x11Atom(display, "_NET_WM_WINDOW_TYPE_NORMAL"));
}

void maximise(xcb_connection_t* display, xcb_window_t window) {
  constexpr std::uint32_t add = 1;
  x11Ask(display, window, "_NET_WM_STATE",
         {add, x11Atom(display, "_NET_WM_STATE_MAXIMIZED_VERT"), x11Atom(display, "_NET_WM_STATE_MAXIMIZED_HORZ"),
          forTheUser, 0});
}

/// Returns whether the window was there. Each is looked at once, since asking a server that is far away takes time.
bool maximiseFirstOf(xcb_connection_t* display, std::uint32_t process, std::set<xcb_window_t>& seen) {
  for (const xcb_window_t window : x11Numbers(display, x11Root(display), x11Atom(display, "_NET_CLIENT_LIST"))) {
    if (!seen.insert(window).second || !isMainWindowOf(display, process, window)) continue;
    maximise(display, window);
    return true;
  }
  return false;
}

}  // namespace

void maximiseWindowOf(qint64 process) {
  xcb_connection_t* display = x11Display();
  if (display == nullptr) return;
  auto* clock = new QTimer(QCoreApplication::instance());
  const auto look = [=, seen = std::set<xcb_window_t>(), looks = patience / interval]() mutable {
    if (maximiseFirstOf(display, static_cast<std::uint32_t>(process), seen) || --looks == 0) clock->deleteLater();
  };
  QObject::connect(clock, &QTimer::timeout, clock, look);
  clock->start(interval);
}

// NOLINTEND(cppcoreguidelines-owning-memory)
#else

void maximiseWindowOf(qint64 /*process*/) {}

#endif

}  // namespace velmora
