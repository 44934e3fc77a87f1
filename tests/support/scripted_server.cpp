#include "support/scripted_server.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTimer>
#include <algorithm>
#include <string>

namespace velmora::test {
namespace {

QSslConfiguration serverConfiguration(const QByteArray& identity) {
  QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
  configuration.setLocalCertificate(QSslCertificate(identity));
  configuration.setPrivateKey(QSslKey(identity, QSsl::Ec));
  configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
  return configuration;
}

}  // namespace

class ServedConnection {
 public:
  ServedConnection(ScriptedServer& server, qintptr handle) : server_(server) {
    QObject::connect(&pump_, &QTimer::timeout, &socket_, [this] { sendNext(); });
    QObject::connect(&socket_, &QIODevice::readyRead, &socket_, [this] { hear(); });
    socket_.setSocketDescriptor(handle);
  }

  void open() { say(server_.script.opened()); }

  void openSecurely() {
    socket_.setSslConfiguration(serverConfiguration(server_.identity));
    QObject::connect(&socket_, &QSslSocket::encrypted, &socket_, [this] { open(); });
    socket_.startServerEncryption();
  }

  bool isConnected() const { return socket_.state() == QAbstractSocket::ConnectedState; }

 private:
  void hear() {
    heard_ += socket_.readAll().toStdString();
    const std::size_t end = heard_.rfind("\r\n");
    if (ends_ || end == std::string::npos) return;
    const std::string commands = heard_.substr(0, end + 2);
    heard_.erase(0, end + 2);
    say(server_.script.heard(commands));
  }

  void say(const std::string& bytes) {
    const std::size_t end = bytes.find(MemoryServer::hangUp);
    said_ += bytes.substr(0, end);
    ends_ = end != std::string::npos || server_.script.hangsUp();
    pump_.start(0);
  }

  void sendNext() {
    const std::size_t size = std::min(server_.chunk, said_.size() - sent_);
    socket_.write(said_.data() + sent_, static_cast<qint64>(size));
    sent_ += size;
    socket_.flush();
    if (sent_ < said_.size() || socket_.bytesToWrite() > 0 || socket_.encryptedBytesToWrite() > 0) return;
    pump_.stop();
    if (ends_) end();
  }

  void end() {
    if (server_.ending == Ending::Clean) {
      socket_.disconnectFromHost();
    } else {
      abort();
    }
  }

  void abort() {
    // With no time to linger the system resets the connection instead of closing it.
    const linger none{1, 0};
    if (server_.ending == Ending::Reset) {
      setsockopt(static_cast<int>(socket_.socketDescriptor()), SOL_SOCKET, SO_LINGER, &none, sizeof none);
    }
    socket_.abort();
  }

  ScriptedServer& server_;
  QTimer pump_;
  std::string heard_;
  std::string said_;
  std::size_t sent_ = 0;  ///< of what was said
  bool ends_ = false;
  QSslSocket socket_;
};

ScriptedServer::ScriptedServer(MemoryServer& served, Protection protection, const QHostAddress& address)
    : script(served), protection_(protection) {
  EXPECT_TRUE(listen(address)) << errorString().toStdString();
}

ScriptedServer::~ScriptedServer() = default;

QByteArray ScriptedServer::makeIdentity() {
  QProcess openssl;
  openssl.start("openssl", {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days",
                            "2", "-subj", "/CN=localhost", "-keyout", "/dev/stdout"});
  EXPECT_TRUE(openssl.waitForFinished()) << "openssl is needed";
  return openssl.readAllStandardOutput();
}

bool ScriptedServer::isConnected() const { return connection_ && connection_->isConnected(); }

void ScriptedServer::incomingConnection(qintptr handle) {
  ++connections;
  connection_ = std::make_unique<ServedConnection>(*this, handle);
  if (protection_ == Protection::Tls) {
    connection_->openSecurely();
  } else {
    connection_->open();
  }
}

}  // namespace velmora::test
