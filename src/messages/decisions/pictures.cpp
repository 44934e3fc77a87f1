#include "messages/decisions/pictures.h"

#include <array>

namespace velmora {

namespace {

constexpr std::array<std::string_view, 14> tabPictures = {
    "MailNo",    "MailYes",   "MailError", "MailNoDisabled", "MailYesDisabled", "MailErrorDisabled", "MailSpin1",
    "MailSpin2", "MailSpin3", "MailSpin4", "MailSpin5",      "MailSpin6",       "MailSpin7",         "MailSpin8"};

}  // namespace

std::string_view rowPicture(const MailMessage& message) {
  if (message.Delete) return message.Attach ? "DeleteAttach" : "Delete";
  if (message.Spam) return message.New ? "SpamNew" : "Spam";
  if (message.Attach) return message.New ? "AttachNew" : "Attach";
  return message.New ? "New" : "Normal";
}

std::string markText(const MailMessage& message) {
  if (!message.Delete && !message.Spam) return {};
  return (message.Delete ? "To be deleted" : "Spam") + std::string(", by the rule '") + message.MarkedBy + "'";
}

std::string tabPicture(const Accounts::Row& account) {
  std::string stem = account.AcntMsgCount < 1 ? "MailNo" : "MailYes";
  if (account.AcntChecked && !account.AcntConnected) stem = "MailError";
  return account.AcntEnabled == 0 ? stem + "Disabled" : stem;
}

std::string spinPicture(int frame) {
  const int number = 15 - frame;
  return std::string(tabPictures.at(static_cast<std::size_t>(number - 1)));
}

}  // namespace velmora
