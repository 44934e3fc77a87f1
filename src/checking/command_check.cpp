#include "checking/command_check.h"

#include "accounts/decisions/accounts.h"
#include "accounts/read_password.h"
#include "checking/decisions/check_texts.h"
#include "checking/decisions/failure_texts.h"
#include "checking/pop_session.h"
#include "options/decisions/options.h"
#include "platform/pop/pop_client.h"

namespace velmora {

namespace {

/// Returns why the account could not be checked, blank where it could.
std::string countMessages(Keyring& keyring, PopClient& client, Accounts::Row& account, const Options& options) {
  std::string trouble;
  try {
    account.AcntPassword = passwordOf(keyring, account);
    DescribeConnection(client, account, options);
    client.ListAhead(false);
    client.Connect();
    account.AcntMsgCount = client.Messages().Count();
    account.AcntConnected = true;
  } catch (const std::exception& failure) {
    const FailureReport report = describe(failure);
    trouble = account.AcntName + ": " + std::to_string(report.number) + " - " + report.text;
  }
  client.Disconnect();
  return trouble;
}

}  // namespace

CheckStatus CheckFromCommandLine(const SettingsStore& settings, Keyring& keyring, PopClient& client,
                                 const CheckLines& lines) {
  Options options;
  loadOptions(settings, OptionField::Read::AtStartUp, options);
  Accounts accounts;
  accounts.ResizeAccounts(Accounts::storedCount(settings).count);
  bool anyChecked = false;
  bool anyFailed = false;
  bool anyMessages = false;
  for (const std::int16_t number : accounts.numbers()) {
    accounts.LoadAccount(settings, number);
    Accounts::Row& account = accounts[number];
    if (account.AcntEnabled == 0) continue;
    const std::string trouble = countMessages(keyring, client, account, options);
    lines.result(statusTextAfterCheck(account, false));
    if (!trouble.empty()) lines.trouble(trouble);
    anyChecked = true;
    anyFailed |= !trouble.empty();
    anyMessages |= account.AcntMsgCount > 0;
  }
  if (!anyChecked) lines.trouble("No account is enabled");
  if (anyFailed || !anyChecked) return CheckStatus::Failure;
  return anyMessages ? CheckStatus::Messages : CheckStatus::NoMessages;
}

}  // namespace velmora
