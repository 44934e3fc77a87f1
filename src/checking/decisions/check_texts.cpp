#include "checking/decisions/check_texts.h"

namespace velmora {

std::string statusTextAfterCheck(const Accounts::Row& account, bool stopRequested) {
  const std::string& name = account.AcntName;
  if (account.AcntConnected) {
    if (account.AcntMsgCount == 0) return name + " - No Messages";
    return name + " - " + std::to_string(account.AcntMsgCount) + (account.AcntMsgCount == 1 ? " Message" : " Messages");
  }
  return name + (stopRequested ? " - User Stopped Retrieval" : " - Error Accessing Account");
}

std::string statusTextAfterDeletion(const Accounts::Row& account) {
  if (account.AcntMsgCount == 0) return account.AcntName + " - No Messages";
  return account.AcntName + " - " + std::to_string(account.AcntMsgCount) + " Message(s)";
}

std::string timeText(const DateTime& now) { return formatDateTime(now, "h:mm AM/PM"); }

Question incompleteWarning(std::string_view appTitle, int accounts, std::string_view accountNames) {
  const std::string word = accounts == 1 ? "Account" : "Accounts";
  Question question;
  question.text = "The following " + word + " may not have completely" + std::string(15, ' ') +
                  "\r\ndownloaded all messages.\r\n" + std::string(accountNames) +
                  "\r\nThis may be due to a lost connection or a\r\nConnection TimeOut if the message was large.\r\n"
                  "Try checking the " +
                  word +
                  " again.\r\n\r\nIf the problem persits you could try increasing the\r\n"
                  "Connection TimeOut in Program Options/Defaults.\r\n\r\n"
                  "Please Note: Before re-checking you may need to\r\n"
                  "temporarily turn off 'Allow Quick Checking'.";
  question.title = std::string(appTitle) + " - Message DownLoad Error";
  question.icon = Question::Icon::Critical;
  return question;
}

Question deleteQuestion(std::string_view appTitle, std::string_view accountName, std::size_t count, bool spam) {
  const std::string word = spam ? " Spam" : "";
  Question question;
  question.text = "Ready to Delete " + std::to_string(count) + word + " Message(s) from '" + std::string(accountName) +
                  "' " + std::string(15, ' ') +
                  "\r\n\r\nThis operation is NOT reversible!\r\n\r\nWould you like to proceed?\r\n";
  question.title = std::string(appTitle) + " - Ready to Delete" + word + " Message(s)";
  question.icon = Question::Icon::Critical;
  question.buttons = Question::Buttons::YesNo;
  return question;
}

Question nothingCheckedNotice(std::string_view appTitle) {
  Question question;
  question.text = "No Accounts were checked for messags!" + std::string(10, ' ') +
                  "\r\n\r\nOnly Enabled Accounts are checked with\r\nthe Check All button.\r\n\r\n"
                  "See the Accounts page.\r\n";
  question.title = std::string(appTitle) + " - No Accounts Checked";
  return question;
}

std::string fetchingText(std::string_view accountName) {
  return "Fetching the message from '" + std::string(accountName) + "'...";
}

}  // namespace velmora
