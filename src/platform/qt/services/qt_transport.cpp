#include "platform/qt/services/qt_transport.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslSocket>
#include <chrono>

#include "platform/failure.h"
#include "platform/qt/services/address_race.h"
#include "platform/qt/services/waiting.h"
#include "platform/qt/strings.h"

namespace velmora {

namespace {

using pop::Milliseconds;

/// As much as is read ahead of the program. More only costs memory.
constexpr qint64 readAhead = 1 << 20;

class QtTransport : public pop::Transport {
 public:
  void connect(const std::string& host, std::uint16_t port, bool secure, Milliseconds timeOut) override {
    const auto deadline = now() + timeOut;
    abort();
    aborted_ = false;
    socket_ = race_.run(host, port, timeOut);
    socket_->setReadBufferSize(readAhead);
    for (const auto signal : {&QAbstractSocket::connected, &QAbstractSocket::disconnected}) {
      QObject::connect(socket_.get(), signal, socket_.get(), [this] { waiting_.wake(); });
    }
    QObject::connect(socket_.get(), &QIODevice::readyRead, socket_.get(), [this] { waiting_.wake(); });
    QObject::connect(socket_.get(), &QAbstractSocket::errorOccurred, socket_.get(), [this] { waiting_.wake(); });
    if (secure) encrypt(host, deadline);
  }

  Certificate certificate() const override {
    if (!socket_ || socket_->peerCertificate().isNull()) return {};
    const auto errors = socket_->sslHandshakeErrors();
    Certificate shown{utf8(socket_->peerCertificate().toText()), 0, ""};
    if (!errors.isEmpty()) {
      shown.errorCode = static_cast<std::int32_t>(errors.first().error());
      shown.errorText = utf8(errors.first().errorString());
    }
    return shown;
  }

  void send(std::string_view bytes) override {
    if (isConnected()) socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
  }

  std::string receive(Milliseconds wait) override {
    const auto deadline = now() + wait;
    while (socket_ && socket_->bytesAvailable() == 0 && isConnected() && now() < deadline) {
      if (!waiting_.wait(deadline - now())) abort();
    }
    return socket_ && socket_->bytesAvailable() > 0 ? socket_->readAll().toStdString() : std::string();
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

  /// Whatever certificate the server shows is taken: the program leaves that judgement to its user.
  void encrypt(const std::string& host, Milliseconds deadline) {
    QSslConfiguration configuration = socket_->sslConfiguration();
    configuration.setProtocol(QSsl::TlsV1_2OrLater);
    configuration.setPeerVerifyMode(QSslSocket::QueryPeer);
    socket_->setSslConfiguration(configuration);
    socket_->setPeerVerifyName(qt(host));
    QObject::connect(socket_.get(), &QSslSocket::encrypted, socket_.get(), [this] { waiting_.wake(); });
    socket_->startClientEncryption();
    while (!socket_->isEncrypted() && isConnected() && now() < deadline) {
      if (!waiting_.wait(deadline - now())) abort();
    }
    if (!socket_->isEncrypted()) failHandshake();
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
  std::unique_ptr<QSslSocket> socket_;
  bool aborted_ = false;
};

}  // namespace

std::unique_ptr<pop::Transport> makeQtTransport() { return std::make_unique<QtTransport>(); }

}  // namespace velmora
