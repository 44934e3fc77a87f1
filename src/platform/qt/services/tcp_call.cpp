#include "platform/qt/services/tcp_call.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

namespace velmora {

namespace {

using Found = std::unique_ptr<addrinfo, void (*)(addrinfo*)>;

Found systemAddress(const QHostAddress& address, std::uint16_t port) {
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const std::string host = address.toString().toStdString();
  if (getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) found = nullptr;
  return {found, freeaddrinfo};
}

int errorOf(int descriptor) {
  int error = 0;
  socklen_t size = sizeof error;
  return getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
}

}  // namespace

TcpCall::TcpCall(const QHostAddress& address, std::uint16_t port, std::function<void()> ended)
    : ended_(std::move(ended)) {
  open(address, port);
}

TcpCall::~TcpCall() {
  answered_.reset();
  if (descriptor_ >= 0) close(descriptor_);
}

void TcpCall::open(const QHostAddress& address, std::uint16_t port) {
  const Found found = systemAddress(address, port);
  if (!found) return end(EHOSTUNREACH);
  descriptor_ = socket(found->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (descriptor_ < 0) return end(errno);
  // Commands are short and wait for one another: none is held back until the one before is acknowledged.
  const int on = 1;
  setsockopt(descriptor_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  if (connect(descriptor_, found->ai_addr, found->ai_addrlen) == 0) return end(0);
  if (errno != EINPROGRESS) return end(errno);
  answered_.emplace(descriptor_, QSocketNotifier::Write);
  QObject::connect(&*answered_, &QSocketNotifier::activated, &*answered_, [this] {
    answered_->setEnabled(false);
    end(errorOf(descriptor_));
    ended_();
  });
}

void TcpCall::end(int error) {
  error_ = error;
  state_ = error == 0 ? State::Connected : State::Failed;
}

int TcpCall::take() {
  answered_.reset();
  return std::exchange(descriptor_, -1);
}

}  // namespace velmora
