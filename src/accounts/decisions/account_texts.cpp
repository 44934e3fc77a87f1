#include "accounts/decisions/account_texts.h"

#include "platform/text.h"

namespace velmora {

namespace {

const std::string tenBlanks(10, ' ');

}  // namespace

bool isPort(std::string_view text) {
  const auto number = text::toNumber(text);
  return number && *number >= 1 && *number <= 65535;
}

std::string protectionText(const Account& account, bool refuseUntrusted) {
  if (account.AcntSecure != 1) return "Not protected: others on the way can read password and messages.";
  if (!refuseUntrusted) return "Encrypted, but the server is not examined: another one may pose as it.";
  return account.AcntCertificate.empty()
             ? "Encrypted, and the server must show a certificate that this system trusts."
             : "Encrypted, and the server must show a trusted certificate, or the one that you accepted.";
}

Question blankName() {
  return {"The Account Name box is blank. Please" + tenBlanks + "\r\nre-enter a name for this Account.\r\n\r\n",
          "Blank Account Name", Question::Icon::Critical};
}

Question duplicateName(std::string_view name) {
  return {"The following Account Name is already used." + tenBlanks + "\r\nAccount Name: '" + std::string(name) +
              "'\r\n\r\nDuplicate Account Names are not allowed.\r\nPlease re-enter a name for this Account.\r\n\r\n",
          "Duplicate Account Name", Question::Icon::Critical};
}

Question changesNotSaved(std::string_view tabCaption) {
  return {"The changes made to the following Account\r\nhave not been saved.\r\nAccount Name: '" +
              std::string(tabCaption) +
              "'\r\n\r\nHow would you like to proceed?\r\n\r\n'Yes' to save the Account changes now.\r\n"
              "'No' to just return to the same Account.\r\n'Cancel' to discard all changes to this Account." +
              tenBlanks + "\r\n\r\n",
          "Changes Not Saved!", Question::Icon::Critical, Question::Buttons::YesNoCancel};
}

Question deleteWarning(std::string_view name) {
  return {"You are about to delete the following Account..." + tenBlanks + "\r\nAccount Name:  '" + std::string(name) +
              "'\r\n\r\nPlease proceed with caution since this action\r\nis NOT reversible!\r\n\r\n"
              "Would you like to proceed?\r\n",
          "Delete Account - Proceed With Caution", Question::Icon::Critical, Question::Buttons::YesNo};
}

}  // namespace velmora
