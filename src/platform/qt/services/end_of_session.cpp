#include "platform/qt/services/end_of_session.h"

#include <QEvent>
#include <QGuiApplication>
#include <utility>

#ifdef Q_OS_UNIX
#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#endif

namespace velmora {

EndOfSession::EndOfSession(std::function<void()> save, std::function<void()> end)
    : save_(std::move(save)), end_(std::move(end)) {
  // How the end is told depends on the display server: X11's session manager has all saved first and then tells them to
  // die, elsewhere a signal comes.
  connect(
      qGuiApp, &QGuiApplication::commitDataRequest, this, [this] { save_(); }, Qt::DirectConnection);
  qGuiApp->installEventFilter(this);
  watchSignals();
}

/// The library would close the windows instead, of which one only goes to the tray.
bool EndOfSession::eventFilter(QObject* watched, QEvent* event) {
  if (watched != qGuiApp || event->type() != QEvent::Quit) return false;
  end_();
  return true;
}

#ifdef Q_OS_UNIX
namespace {

/// A signal's handler may do little more than write; the event loop reads. A handler can be told nothing, so these
/// stand here.
int told = -1;
std::atomic_flag wasTold;

/// A SIGHUP counts for neither the first word nor the second: at the end of a session it comes together with a SIGTERM,
/// and at the end of a terminal twice.
void tell(int signal) {
  if (signal != SIGHUP && wasTold.test_and_set()) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);  // it ends the program as soon as this returns
    return;
  }
  const int before = errno;
  const char something = 1;
  [[maybe_unused]] const auto written = write(told, &something, sizeof something);
  errno = before;
}

}  // namespace

void EndOfSession::watchSignals() {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) != 0) return;
  told = ends[0];
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): this object owns it
  auto* notifier = new QSocketNotifier(ends[1], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
    notifier->setEnabled(false);
    end_();
  });
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    const auto before = std::signal(signal, tell);
    if (before == SIG_IGN) std::signal(signal, SIG_IGN);  // whoever started the program wants it so
  }
}
#else
void EndOfSession::watchSignals() {}
#endif

}  // namespace velmora
