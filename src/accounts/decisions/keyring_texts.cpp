#include "accounts/decisions/keyring_texts.h"

#include "platform/text.h"

namespace velmora {

namespace {

std::string_view wordsFor(KeyringAnswer::Outcome outcome) {
  switch (outcome) {
    case KeyringAnswer::Outcome::NotFound:
      return "The desktop's keyring does not hold this password any more.";
    case KeyringAnswer::Outcome::Refused:
      return "The desktop's keyring is locked, or did not let Velmora use it.";
    default:
      return "The desktop's keyring is not there, or does not work.";
  }
}

Question keyringNotice(std::string_view appTitle, const std::string& text) {
  return {text + "\r\n\r\n", std::string(appTitle) + " - Keyring Error", Question::Icon::Critical};
}

PasswordQuestion askFor(std::string_view appTitle, std::string_view accountName, const KeyringAnswer& answer,
                        const std::string& use) {
  return {keyringTrouble(answer) + "\r\n\r\nPlease enter the password of the Account: " + std::string(accountName) +
              "\r\n" + use,
          std::string(appTitle) + " - Password Needed"};
}

}  // namespace

std::string keyringTrouble(const KeyringAnswer& answer) {
  constexpr std::size_t longest = 200;
  std::string words(wordsFor(answer.outcome));
  if (!answer.detail.empty()) words += "\r\n" + std::string(text::left(answer.detail, longest));
  return words;
}

PasswordQuestion passwordQuestion(std::string_view appTitle, std::string_view accountName,
                                  const KeyringAnswer& answer) {
  return askFor(appTitle, accountName, answer,
                "It is used until " + std::string(appTitle) + " ends, and is not stored.");
}

PasswordQuestion passwordForSettings(std::string_view appTitle, std::string_view accountName,
                                     const KeyringAnswer& answer) {
  return askFor(appTitle, accountName, answer, "It is kept in the settings file from now on.");
}

Question passwordsNotMoved(std::string_view appTitle, bool intoKeyring, std::string_view trouble) {
  const std::string stays =
      intoKeyring ? "The passwords stay in the settings file." : "The passwords stay in the keyring.";
  return keyringNotice(appTitle, stays + "\r\n\r\n" + std::string(trouble));
}

Question passwordNotSaved(std::string_view appTitle, std::string_view trouble) {
  return keyringNotice(appTitle, "The Account was not saved.\r\n\r\n" + std::string(trouble));
}

Question entriesRemain(std::string_view appTitle) {
  return {.text =
              "The keyring still holds entries with passwords that are no longer needed.\r\n"
              "They are removed by a check of yours, once the keyring is open.\r\n",
          .title = std::string(appTitle) + " - Keyring"};
}

}  // namespace velmora
