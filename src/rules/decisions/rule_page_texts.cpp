#include "rules/decisions/rule_page_texts.h"

namespace velmora {

namespace {

const std::string tenBlanks(10, ' ');

std::string titled(std::string_view appTitle, std::string_view phrase) {
  return std::string(appTitle) + " - " + std::string(phrase);
}

}  // namespace

Question maximumEntries(std::string_view appTitle) {
  return {"Maximum Reached!\r\n\r\nThe Maximum number of entries is" + tenBlanks +
              "\r\nlimited to 10.\r\n\r\nPlease try adding another Rule\r\nusing the same conditions.\r\n",
          titled(appTitle, "Maximum Entries")};
}

Question blankRuleName(std::string_view appTitle) {
  return {"Rule Name Error...\r\n\r\nThe Rule Name can not be blank." + std::string(20, ' ') +
              "\r\n\r\nPlease re-enter an appropriate Rule Name.\r\n\r\n",
          titled(appTitle, "Rule Name Error"), Question::Icon::Critical};
}

Question blankDescription(std::string_view appTitle) {
  return {"Rule Description Error...\r\n\r\nThe Rule Description can not be blank." + tenBlanks +
              "\r\n\r\nPlease enter the appropriate search text\r\nin the Criteria textbox and click 'Update\r\n"
              "Description' to finish defining the Rule.\r\n\r\n",
          titled(appTitle, "Rule Description Error"), Question::Icon::Critical};
}

Question deleteRuleWarning(std::string_view name) {
  return {"You are about to delete the following Rule..." + tenBlanks + "\r\nRule Name:  '" + std::string(name) +
              "'\r\n\r\nPlease proceed with caution since this action\r\nis NOT reversible!\r\n\r\n"
              "Would you like to proceed?\r\n",
          "Delete Rule - Proceed With Caution", Question::Icon::Critical, Question::Buttons::YesNo};
}

Question rulesNotSaved() {
  return {
      "The changes made to the Rules\r\nhave not been saved.\r\n\r\nHow would you like to proceed?\r\n\r\n"
      "'Yes' to save the Rules now.\r\n'No' to just return to the Rules.\r\n"
      "'Cancel' to discard all changes to the Rules." +
          tenBlanks + "\r\n\r\n",
      "Changes Not Saved!", Question::Icon::Critical, Question::Buttons::YesNoCancel};
}

Question rulesFileChanged(std::string_view appTitle, std::string_view path) {
  return {"Another program has changed the Rules File since it was last read." + tenBlanks + "\r\n" +
              std::string(path) +
              "\r\n\r\n'Yes' to replace it: what was changed there is lost.\r\n"
              "'No' to leave it as it is: nothing is saved. To use it, discard\r\n"
              "the changes made here and start " +
              std::string(appTitle) + " again.\r\n",
          titled(appTitle, "Rules File Changed"), Question::Icon::Critical, Question::Buttons::YesNo};
}

Question rulesFileExists(std::string_view appTitle, std::string_view path) {
  return {"There is a Rules File of this name already. It may hold the Rules of another user." + tenBlanks + "\r\n" +
              std::string(path) +
              "\r\n\r\n'Yes' to replace it: the Rules in it are lost.\r\n"
              "'No' to leave it as it is: nothing is changed.\r\n",
          titled(appTitle, "Rules File Exists"), Question::Icon::Critical, Question::Buttons::YesNo};
}

std::string ruleFitsText(const FitCounts& counts) {
  if (counts.messages == 0) return "can be tried here once there are messages in the lists";
  std::string text = "fits " + std::to_string(counts.fits) + " of " + std::to_string(counts.messages) +
                     (counts.messages == 1 ? " message" : " messages") + " in the lists";
  if (counts.failed > 0) text += ", and can't tell of " + std::to_string(counts.failed);
  if (counts.left > 0) text += ", " + std::to_string(counts.left) + " to go";
  return text;
}

}  // namespace velmora
