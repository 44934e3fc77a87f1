#include "accounts/decisions/account_names.h"

#include "platform/text.h"

namespace velmora {

namespace {

/// How many accounts have this name, in upper case, in their records or in their working copies.
template <class NameOf>
int countNamed(std::int16_t count, const std::string& name, NameOf nameOf) {
  int named = 0;
  for (std::int16_t number = 1; number <= count; ++number) {
    if (text::upper(nameOf(number)) == name) ++named;
  }
  return named;
}

}  // namespace

std::string newAccountName(const Accounts& accounts) {
  const auto nameOf = [&accounts](std::int16_t number) { return accounts[number].AcntName; };
  int k = 1;
  while (countNamed(accounts.AcntNum(), "NEW ACCOUNT" + std::to_string(k), nameOf) > 0) ++k;
  return "New Account" + std::to_string(k);
}

bool isNameTaken(Accounts& accounts, std::int16_t number) {
  const auto nameOf = [&accounts](std::int16_t each) { return accounts.Edit(each).AcntName; };
  return countNamed(accounts.AcntNum(), text::upper(accounts.Edit(number).AcntName), nameOf) > 1;
}

/// Only in front: a short name is part of many words.
std::string behindName(std::string_view text, std::string_view name) {
  return std::string(text.starts_with(name) ? text.substr(name.size()) : text);
}

}  // namespace velmora
