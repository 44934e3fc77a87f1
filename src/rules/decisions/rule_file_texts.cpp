#include "rules/decisions/rule_file_texts.h"

namespace velmora {

namespace {

const std::string tenBlanks(10, ' ');

}  // namespace

Question ruleFileNameRefused(std::string_view appTitle, std::string_view reason) {
  return {"Rules FileName Error...\r\n\r\nThe Rules can not be kept under this FileName." + tenBlanks + "\r\n\r\n" +
              std::string(reason) + "\r\n\r\nPlease use another FileName.\r\n\r\n",
          std::string(appTitle) + " - Rules FileName Error", Question::Icon::Critical};
}

Question importLosesChanges() {
  return {
      "The changes made to the Rules\r\nhave not been saved.\r\n\r\n"
      "Other Rules would take the place of these.\r\n\r\n"
      "'Yes' to import Rules and to lose the changes.\r\n'No' to just return to the Rules." +
          tenBlanks + "\r\n\r\n",
      "Changes Not Saved!", Question::Icon::Critical, Question::Buttons::YesNo};
}

Question importReplacesRules(std::string_view appTitle) {
  return {"The Rules File that you import has the same name as the one in use." + tenBlanks +
              "\r\n\r\n'Yes' to replace that: your present Rules are lost.\r\n'No' to keep your Rules.\r\n",
          std::string(appTitle) + " - Rules File Exists", Question::Icon::Critical, Question::Buttons::YesNo};
}

Question ruleImportFailed(std::string_view appTitle) {
  return {"Rule Import Failed.\r\n\r\nThe Imported Rule File does not appear " + tenBlanks +
              "\r\nto be the correct format or it does not\r\ncontain any Rules.\r\n\r\n"
              "Try Help for further information.\r\n",
          std::string(appTitle) + " - Rule Import Failed"};
}

Question ruleImportSuccessful(std::string_view appTitle, bool accountsModified) {
  std::string text = "The Rule File has been successfully imported." + tenBlanks + "\r\n\r\n";
  if (accountsModified) {
    text +=
        "Some Account modifications were made to\r\nensure compatibility with your current Accounts.\r\n"
        "You may need to adjust these.\r\n\r\n";
  }
  return {text, std::string(appTitle) + " - Rule Import Successful"};
}

}  // namespace velmora
