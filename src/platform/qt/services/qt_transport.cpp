#include "platform/qt/services/qt_transport.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#include <QSslConfiguration>
#include <QSslSocket>

#include <algorithm>
#include <chrono>
#include <iterator>

#include "platform/failure.h"
#include "platform/qt/services/address_race.h"
#include "platform/qt/services/describe_certificate.h"
#include "platform/qt/services/waiting.h"
#include "platform/qt/strings.h"

namespace velmora {

namespace {

using pop::Milliseconds;

/// As much as is read ahead of the program. More only costs memory.
constexpr qint64 readAhead = 1 << 20;

/// Has the system acknowledge what has come at once. It would wait some 40 ms otherwise, for something to send along,
/// and a server that sends an answer in two pieces holds the second one back for as long.
void acknowledge(const QTcpSocket& socket) {
#ifdef TCP_QUICKACK
  const int on = 1;
  setsockopt(static_cast<int>(socket.socketDescriptor()), IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
#endif
}

class QtTransport : public pop::Transport {
 public:
  void connect(const std::string& host, std::uint16_t port, bool secure, Milliseconds timeOut) override {
    const auto deadline = now() + timeOut;
    abort();
    aborted_ = false;
    open(race_.run(host, port, timeOut), secure);
    if (tls_ != nullptr) encrypt(host, deadline);
  }

  ServerCertificate certificate() const override {
    return tls_ == nullptr ? ServerCertificate() : describe(tls_->peerCertificate(), tls_->sslHandshakeErrors());
  }

  void send(std::string_view bytes) override {
    if (!isConnected()) return;
    socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    // Otherwise they would leave when the loop turns next, and the server be idle while what came is worked on.
    socket_->flush();
  }

  std::string receive(Milliseconds wait) override {
    const auto deadline = now() + wait;
    while (socket_ && socket_->bytesAvailable() == 0 && isConnected() && now() < deadline) {
      if (!waiting_.wait(deadline - now())) abort();
    }
    if (!socket_ || socket_->bytesAvailable() == 0) return {};
    std::string bytes(static_cast<std::size_t>(socket_->bytesAvailable()), '\0');
    bytes.resize(static_cast<std::size_t>(std::max(socket_->read(bytes.data(), std::ssize(bytes)), qint64{0})));
    acknowledge(*socket_);
    return bytes;
  }

  bool turn() override { return waiting_.wait(Milliseconds::zero()); }

  bool isOpen() const override { return isConnected() || (socket_ && socket_->bytesAvailable() > 0); }

  void abort() override {
    aborted_ = true;
    race_.stop();
    if (socket_) socket_->abort();
    waiting_.wake();
  }

  Milliseconds now() const override {
    return std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
  }

 private:
  bool isConnected() const { return socket_ && socket_->state() == QAbstractSocket::ConnectedState; }

  /// A plain connection needs nothing of TLS, whose library takes its time to load.
  void open(int descriptor, bool secure) {
    socket_ = secure ? std::make_unique<QSslSocket>() : std::make_unique<QTcpSocket>();
    tls_ = secure ? static_cast<QSslSocket*>(socket_.get()) : nullptr;
    socket_->setReadBufferSize(readAhead);
    const auto wake = [this] { waiting_.wake(); };
    QObject::connect(socket_.get(), &QTcpSocket::readyRead, socket_.get(), wake);
    QObject::connect(socket_.get(), &QTcpSocket::disconnected, socket_.get(), wake);
    QObject::connect(socket_.get(), &QTcpSocket::errorOccurred, socket_.get(), wake);
    if (socket_->setSocketDescriptor(descriptor)) return;
    close(descriptor);
    throw PopFailure(pop_failure::connectionReset, utf8(socket_->errorString()));
  }

  /// Whatever certificate the server shows is taken: the program leaves that judgement to its user.
  void encrypt(const std::string& host, Milliseconds deadline) {
    QSslConfiguration configuration = tls_->sslConfiguration();
    configuration.setProtocol(QSsl::TlsV1_2OrLater);
    configuration.setPeerVerifyMode(QSslSocket::QueryPeer);
    tls_->setSslConfiguration(configuration);
    tls_->setPeerVerifyName(qt(host));
    QObject::connect(tls_, &QSslSocket::encrypted, tls_, [this] { waiting_.wake(); });
    tls_->startClientEncryption();
    while (!tls_->isEncrypted() && isConnected() && now() < deadline) {
      if (!waiting_.wait(deadline - now())) abort();
    }
    if (!tls_->isEncrypted()) failHandshake();
  }

  [[noreturn]] void failHandshake() {
    if (aborted_) throw PopFailure(pop_failure::connectionReset, "The connection was given up.");
    const std::string text =
        isConnected() ? "The server did not answer the TLS handshake in time." : utf8(socket_->errorString());
    abort();
    throw PopFailure(pop_failure::tlsHandshakeFailed, text);
  }

  Waiting waiting_;
  AddressRace race_{waiting_};
  std::unique_ptr<QTcpSocket> socket_;
  QSslSocket* tls_ = nullptr;  ///< the same where it is secure
  bool aborted_ = false;
};

}  // namespace

std::unique_ptr<pop::Transport> makeQtTransport() { return std::make_unique<QtTransport>(); }

}  // namespace velmora
