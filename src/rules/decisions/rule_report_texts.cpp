#include "rules/decisions/rule_report_texts.h"

#include "accounts/decisions/account_list.h"

namespace velmora {

namespace {

std::string lineOf(const Accounts::Row& account, std::int16_t marks) {
  return account.AcntName + " has " + std::to_string(marks) + (marks < 2 ? " message" : " messages") + "\r\n";
}

}  // namespace

bool wantsRuleReport(const Accounts& accounts, const RuleSetHead& rules) {
  if (rules.Show != 1) return false;
  for (const std::int16_t number : accounts.numbers()) {
    const Accounts::Row& account = accounts[number];
    if (account.AcntDeleteCount < 1 && account.AcntSpamCount < 1) continue;
    return rules.ShowNew == 0 || (rules.ShowNew == 1 && account.AcntHasNew);
  }
  return false;
}

MarkedAccounts markedAccounts(const Accounts& accounts, std::int16_t AccountState::*marks, std::string_view nothing) {
  MarkedAccounts result;
  for (const std::int16_t number : accounts.numbers()) {
    const std::int16_t count = accounts[number].*marks;
    if (count < 1) continue;
    ++result.count;
    result.text += lineOf(accounts[number], count);
  }
  result.text = result.count == 0 ? std::string(nothing) : accountList(result.text, result.count);
  return result;
}

Question deletionTrouble(std::string_view appTitle) {
  Question question;
  question.text =
      "There was an unknown error during Deletion.\r\n\r\nPerhaps the connection was disabled.\r\n\r\n"
      "You should check your messages carefully\r\nsince some messages may have been deleted\r\n"
      "and some may not have been deleted.";
  question.title = std::string(appTitle) + " - Unknown Error";
  question.icon = Question::Icon::Critical;
  return question;
}

}  // namespace velmora
