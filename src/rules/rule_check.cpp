#include "rules/rule_check.h"

#include <exception>

#include "app/program.h"
#include "platform/failure.h"
#include "rules/decisions/rule_match.h"

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
  if (!message.Delete && !message.Spam) return false;
  message.MarkedBy = rule.Name;
  return true;
}

/// How many bytes rules look through before the event loop turns: a twentieth of a second's work, which a mailbox
/// without large messages hardly comes to.
constexpr std::size_t betweenTurns = 16 << 20;

/// A stop is no fault of the rule that was at work.
struct Stopped : RunTimeFailure {
  Stopped() : RunTimeFailure(invalidCallFailure()) {}
};

void look(Program& program, std::size_t& looked, std::size_t bytes) {
  looked += bytes;
  if (looked < betweenTurns) return;
  looked = 0;
  program.platform.yield();
  if (program.connection.StopRequested) throw Stopped();
}

}  // namespace

void RuleCheck(Program& program, RuleWalk& walk, std::int16_t account, std::int16_t message) {
  MailMessage& mail = program.messages.at(account, message);
  Accounts::Row& row = program.accounts[account];
  mail.Delete = mail.Spam = false;
  mail.MarkedBy.clear();
  RuledMessage ruled(mail, [&](std::size_t bytes) { look(program, walk.looked, bytes); });
  for (const Rule& rule : walk.rules.rules()) {
    if (isInForce(rule, row) && RuleMatches(program, rule, ruled) && mark(mail, rule, row)) return;
  }
}

bool RuleMatches(Program& program, const Rule& rule, RuledMessage& message) {
  try {
    return ruleFits(rule, message);
  } catch (const Stopped&) {
    throw;
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
