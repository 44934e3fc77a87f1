#include "rules/rule_check.h"

#include <exception>

#include "app/program.h"
#include "rules/rule_match.h"

namespace velmora {

namespace {

bool isInForce(const Rule& rule, const Account& account) {
  return (rule.Account == account.AcntName || rule.Account == allAccounts) && rule.Enabled == 1;
}

/// Returns whether the rule has marked the message.
bool mark(MailMessage& message, const Rule& rule, AccountState& account) {
  if (rule.Action == Rule::deleteFromServer) {
    message.Delete = true;
    ++account.AcntDeleteCount;
  }
  if (rule.Action == Rule::markAsSpam) {
    message.Spam = true;
    ++account.AcntSpamCount;
  }
  return message.Delete || message.Spam;
}

}  // namespace

void RuleCheck(Program& program, std::int16_t account, std::int16_t message) {
  MailMessage& mail = program.messages.at(account, message);
  Accounts::Row& row = program.accounts[account];
  mail.Delete = mail.Spam = false;
  RuledMessage ruled(mail);
  for (const Rule& rule : program.rules.live.rules()) {
    if (isInForce(rule, row) && RuleMatches(program, rule, ruled) && mark(mail, rule, row)) return;
  }
}

bool RuleMatches(Program& program, const Rule& rule, RuledMessage& message) {
  try {
    return ruleFits(rule, message);
  } catch (const std::exception&) {
    Question box;
    box.text = "Rule Check - Process Error\r\nRemove from final code!!";
    box.title = program.AppTitle;
    box.icon = Question::Icon::None;
    program.platform.MsgBox(box);
    return false;
  }
}

}  // namespace velmora
