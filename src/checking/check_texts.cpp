#include "checking/check_texts.h"

namespace velmora {

std::string statusTextAfterCheck(const Accounts::Row& account, bool stopRequested) {
  const std::string& name = account.AcntName;
  if (account.AcntConnected) {
    if (account.AcntMsgCount == 0) return name + " - No Messages";
    return name + " - " + std::to_string(account.AcntMsgCount) + (account.AcntMsgCount == 1 ? " Message" : " Messages");
  }
  return name + (stopRequested ? " - User Stopped Retrieval" : " - Error Accessing Account");
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

Question nothingCheckedNotice(std::string_view appTitle) {
  Question question;
  question.text = "No Accounts were checked for messags!" + std::string(10, ' ') +
                  "\r\n\r\nOnly Enabled Accounts are checked with\r\nthe Check All button.\r\n\r\n"
                  "See the Accounts page.\r\n";
  question.title = std::string(appTitle) + " - No Accounts Checked";
  return question;
}

}  // namespace velmora
