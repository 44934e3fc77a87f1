// Starts a program and tells how many milliseconds pass until its window is on the screen, as the display tells
// everybody who asks: nothing is polled. Wants a display without a window manager. Ends the program then.
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <memory>

namespace {

using Clock = std::chrono::steady_clock;

template <class T>
using Freed = std::unique_ptr<T, decltype(&std::free)>;

/// Windows that are less wide are none that a user waits for.
constexpr int leastWidth = 400;
constexpr unsigned longestSeconds = 30;

bool isWide(xcb_connection_t& display, xcb_window_t window) {
  const Freed<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(&display, xcb_get_geometry(&display, window), nullptr), std::free);
  return geometry && geometry->width >= leastWidth;
}

/// Has the display tell of every window that appears.
void listen(xcb_connection_t& display) {
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(&display)).data->root;
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  Freed<xcb_generic_error_t>(
      xcb_request_check(&display, xcb_change_window_attributes_checked(&display, root, XCB_CW_EVENT_MASK, &events)),
      std::free);
}

/// When a wide window appears; nothing where the display goes.
Clock::time_point appearance(xcb_connection_t& display) {
  for (;;) {
    const Freed<xcb_generic_event_t> event(xcb_wait_for_event(&display), std::free);
    const auto now = Clock::now();
    if (!event) return {};
    if ((event->response_type & 0x7F) != XCB_MAP_NOTIFY) continue;
    if (isWide(display, reinterpret_cast<const xcb_map_notify_event_t&>(*event).window)) return now;
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc < 2) {
    std::cerr << "Usage: appear PROGRAM [ARGUMENT...]\n";
    return 2;
  }
  const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> display(xcb_connect(nullptr, nullptr),
                                                                             xcb_disconnect);
  if (xcb_connection_has_error(display.get()) != 0) {
    std::cerr << "appear: there is no display\n";
    return 3;
  }
  listen(*display);
  alarm(longestSeconds);
  pid_t program = 0;
  const auto begin = Clock::now();
  if (posix_spawn(&program, argv[1], nullptr, nullptr, argv + 1, environ) != 0) {
    std::cerr << "appear: " << argv[1] << " can't be started\n";
    return 3;
  }
  const std::chrono::duration<double, std::milli> passed = appearance(*display) - begin;
  std::cout << passed.count() << '\n';
  kill(program, SIGTERM);
  waitpid(program, nullptr, 0);
}
