#pragma once

#include <QByteArray>
#include <QStringList>
#include <QTemporaryDir>
#include <cstdint>
#include <string>

namespace velmora::test {

/// A private Dovecot on 127.0.0.1, whose user "user" has the password "secret".
class Dovecot {
 public:
  Dovecot();
  ~Dovecot();
  Dovecot(const Dovecot&) = delete;
  Dovecot& operator=(const Dovecot&) = delete;

  /// Puts a message, as a file has it, behind those of the mailbox.
  void deliver(const std::string& bytes) const;

  std::uint16_t port() const { return port("plain="); }
  std::uint16_t tlsPort() const { return port("tls="); }

 private:
  QByteArray run(const QString& action, const QStringList& arguments = {}) const;
  std::uint16_t port(const QByteArray& name) const;

  QTemporaryDir folder_{"/tmp/velmora-XXXXXX"};  // where the user can get that it runs as
  QByteArray ports_;
};

}  // namespace velmora::test
