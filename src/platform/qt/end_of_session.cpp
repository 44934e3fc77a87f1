#include "platform/qt/end_of_session.h"

#include <QGuiApplication>
#include <utility>

#ifdef Q_OS_LINUX
#include <sys/signalfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <csignal>
#endif

namespace velmora {

EndOfSession::EndOfSession(std::function<void()> end) : end_(std::move(end)) {
  // How the end is told depends on the display server: X11's session manager asks, elsewhere a signal comes.
  connect(
      qGuiApp, &QGuiApplication::commitDataRequest, this, [this] { end_(); }, Qt::DirectConnection);
  watchSignals();
}

#ifdef Q_OS_LINUX
void EndOfSession::watchSignals() {
  sigset_t watched;
  sigemptyset(&watched);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&watched, number);
  const int descriptor = signalfd(-1, &watched, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor < 0 || pthread_sigmask(SIG_BLOCK, &watched, nullptr) != 0) return;
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): this object owns it
  auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [this, descriptor] {
    signalfd_siginfo told{};
    if (read(descriptor, &told, sizeof told) > 0) end_();
  });
  connect(this, &QObject::destroyed, [descriptor] { close(descriptor); });
}
#else
void EndOfSession::watchSignals() {}
#endif

}  // namespace velmora
