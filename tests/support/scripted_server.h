#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QTcpServer>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "support/memory_server.h"

namespace velmora::test {

class ServedConnection;

/// How a server protects its connections.
enum class Protection { None, Tls };

/// How a server ends a connection. It always sends all that it has to say first.
enum class Ending {
  Clean,       ///< with TLS's own good-bye, where there is TLS
  WithoutBye,  ///< the connection closes without it
  Reset,       ///< the connection is torn down
};

/// Puts a MemoryServer on a real socket, one connection at a time. It lives in the thread of the test, so it is served
/// by whatever turns the event loop. Of the script's `line` nothing counts here. An answer of the script may end in
/// MemoryServer::hangUp, which ends the connection there.
class ScriptedServer : public QTcpServer {
 public:
  /// The script outlives the server.
  explicit ScriptedServer(MemoryServer& script, Protection protection = Protection::None,
                          const QHostAddress& address = QHostAddress::LocalHost);
  ~ScriptedServer() override;

  MemoryServer& script;
  std::size_t chunk = std::size_t{1} << 20U;  ///< most bytes that are sent in one go
  Ending ending = Ending::Clean;
  int connections = 0;

  /// The certificate and its key, in PEM, that it shows from now on: one that nobody has reason to trust.
  QByteArray identity = makeIdentity();
  static QByteArray makeIdentity();

  std::uint16_t port() const { return serverPort(); }

  /// A client is connected.
  bool isConnected() const;

 protected:
  void incomingConnection(qintptr handle) override;

 private:
  Protection protection_;
  std::unique_ptr<ServedConnection> connection_;
};

}  // namespace velmora::test
