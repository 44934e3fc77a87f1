#pragma once

#include <QPointer>
#include <memory>
#include <string>

#include "platform/keyring.h"

namespace QKeychain {
class Job;
}

namespace velmora {

/// The keyring of the user's desktop, by way of a library that knows each desktop's own. A password that can't be kept
/// there is kept nowhere. Nothing happens before the first call.
class QtKeyring : public Keyring {
 public:
  QtKeyring();
  ~QtKeyring() override;
  QtKeyring(const QtKeyring&) = delete;
  QtKeyring& operator=(const QtKeyring&) = delete;

  KeyringAnswer read(const std::string& key) override;
  KeyringAnswer write(const std::string& key, const std::string& password) override;
  KeyringAnswer remove(const std::string& key) override;
  void giveUp() override;

 private:
  struct Call;

  KeyringAnswer carryOut(QKeychain::Job* job, const std::string& key);

  QPointer<QKeychain::Job> unanswered_;  ///< a call that nobody waits for any more, behind which others would queue
  std::weak_ptr<Call> waiting_;
};

}  // namespace velmora
