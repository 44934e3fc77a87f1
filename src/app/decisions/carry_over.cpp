#include "app/decisions/carry_over.h"

#include <algorithm>
#include <set>
#include <string>

namespace velmora {

namespace {

/// What is here of the mailbox of an account of the file, under its name or under another one.
const Account* formerOf(const MovedSettings& here, const Account& account, bool byName) {
  const auto goesOn = [&](const Account& former) {
    return isSameMailbox(former, account) && byName == (former.AcntName == account.AcntName);
  };
  const auto found = std::ranges::find_if(here.accounts, goesOn);
  return found == here.accounts.end() ? nullptr : &*found;
}

}  // namespace

bool isSameMailbox(const Account& a, const Account& b) {
  return haveSameServer(a, b) && a.AcntLoginID == b.AcntLoginID;
}

void carryOver(const MovedSettings& here, MovedSettings& there) {
  std::set<std::string> keys;
  for (const bool byName : {true, false}) {
    for (Account& account : there.accounts) {
      if (!account.AcntKeyringKey.empty() && byName && !keys.insert(account.AcntKeyringKey).second) {
        account.AcntKeyringKey.clear();
      }
      const Account* former = formerOf(here, account, byName);
      if (former == nullptr) continue;
      if (account.AcntCertificate.empty()) copyCertificate(*former, account);
      if (!account.AcntPassword.empty() || !account.AcntKeyringKey.empty()) continue;
      account.AcntPassword = former->AcntPassword;
      if (keys.insert(former->AcntKeyringKey).second) account.AcntKeyringKey = former->AcntKeyringKey;
    }
  }
}

}  // namespace velmora
