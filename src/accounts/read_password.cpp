#include "accounts/read_password.h"

#include "accounts/accounts_page.h"
#include "accounts/decisions/keyring_texts.h"
#include "accounts/keyring_entries.h"
#include "app/program.h"
#include "platform/failure.h"

namespace velmora {

namespace {

PopFailure outOfReach(const std::string& words) { return {pop_failure::passwordOutOfReach, words}; }

/// A keyring that has refused once is not asked for each account of a walk, nor by the clock.
KeyringAnswer read(Program& program, const std::string& key) {
  if (program.activity == Activity::Checking && program.keyring.refused) {
    return {.outcome = KeyringAnswer::Outcome::Refused};
  }
  KeyringAnswer answer = program.platform.keyring().read(key);
  program.keyring.refused = answer.outcome == KeyringAnswer::Outcome::Refused;
  return answer;
}

/// The keyring and the box below may take their time to ask the user, who may stop a check or a fetch meanwhile.
void goOnUnlessStopped(const Program& program) {
  const bool canStop = program.activity == Activity::Checking || program.activity == Activity::Fetching;
  if (canStop && program.connection.StopRequested) throw outOfReach("");
}

std::string enteredPassword(Program& program, std::int16_t account, const KeyringAnswer& answer) {
  const auto entered =
      program.platform.askForPassword(passwordQuestion(program.AppTitle, program.accounts[account].AcntName, answer));
  if (!entered) throw outOfReach("");
  program.accounts[account].AcntPasswordForNow = *entered;
  return *entered;
}

}  // namespace

std::string PasswordOf(Program& program, std::int16_t account) {
  const Accounts::Row& row = program.accounts[account];
  if (row.AcntKeyringKey.empty() || row.AcntPasswordKnown) return row.AcntPassword;
  if (!row.AcntPasswordForNow.empty()) return row.AcntPasswordForNow;
  const KeyringAnswer answer = read(program, std::string(row.AcntKeyringKey));
  if (answer.isDone()) {
    LearnPassword(program, account, answer.password);
    TidyEntries(program);
    goOnUnlessStopped(program);
    return answer.password;
  }
  goOnUnlessStopped(program);
  if (program.walk.notices.timed || program.activity == Activity::Ending) throw outOfReach(keyringTrouble(answer));
  return enteredPassword(program, account, answer);
}

std::string passwordOf(Keyring& keyring, const Account& account) {
  if (account.AcntKeyringKey.empty()) return account.AcntPassword;
  const KeyringAnswer answer = keyring.read(account.AcntKeyringKey);
  if (!answer.isDone()) throw outOfReach(keyringTrouble(answer));
  return answer.password;
}

}  // namespace velmora
