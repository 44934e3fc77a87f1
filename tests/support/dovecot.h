#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <cstdint>

#include "support/scripted_server.h"

namespace velmora::test {

/// A real POP3 server on 127.0.0.1 with its mail in a folder of its own. It ends with this object.
class Dovecot {
 public:
  Dovecot();
  ~Dovecot();
  Dovecot(const Dovecot&) = delete;
  Dovecot& operator=(const Dovecot&) = delete;

  std::uint16_t port(Protection protection) const { return protection == Protection::Tls ? tls_ : plain_; }

  /// Adds a mailbox with the password "secret".
  void addUser(const QString& name);

  /// Messages 1, 2, ... in the order given.
  void deliver(const QString& name, const QStringList& files);

  /// What the server has written down about its sessions, one line for each that has ended.
  QStringList farewells() const;

 private:
  QTemporaryDir folder_{"/tmp/velmora-XXXXXX"};  // right under /tmp: its sockets' names must be short
  std::uint16_t plain_ = 0;
  std::uint16_t tls_ = 0;
};

/// Runs a script of the project, and returns what it printed. A failure of it is one of the test.
QString runScript(const QString& name, const QStringList& arguments);

}  // namespace velmora::test
