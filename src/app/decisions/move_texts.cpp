#include "app/decisions/move_texts.h"

#include <algorithm>
#include <vector>

#include "platform/profile.h"
#include "platform/text.h"

namespace velmora {

namespace {

constexpr auto lineEnd = "\r\n";

Question notice(std::string_view appTitle, std::string_view phrase, std::string text,
                Question::Icon icon = Question::Icon::Information) {
  return {.text = std::move(text), .title = std::string(appTitle).append(" - ").append(phrase), .icon = icon};
}

/// As many of them as a box has room for, behind what they have in common.
std::string named(std::string_view what, const std::vector<std::string>& names, std::size_t most = 8) {
  if (names.empty()) return {};
  std::string line = "      " + std::string(what);
  for (std::size_t i = 0; i < std::min(most, names.size()); ++i) {
    line.append(i == 0 ? "" : ", ").append(text::left(names[i], 40));
  }
  if (names.size() > most) line += " and " + std::to_string(names.size() - most) + " more";
  return line + lineEnd;
}

const Account* findNamed(const std::vector<Account>& accounts, const std::string& name) {
  const auto hasName = [key = text::upper(name)](const Account& account) {
    return text::upper(account.AcntName) == key;
  };
  const auto found = std::ranges::find_if(accounts, hasName);
  return found == accounts.end() ? nullptr : &*found;
}

bool isSame(const Account& a, const Account& b) {
  const auto equal = [&](const Field<Account>& field) { return isEqual(field, a, b); };
  return std::ranges::all_of(accountFields(), equal) && std::ranges::all_of(chosenAccountFields(), equal);
}

std::string accountChanges(const std::vector<Account>& here, const std::vector<Account>& there) {
  std::vector<std::string> added;
  std::vector<std::string> changed;
  std::vector<std::string> gone;
  for (const Account& account : there) {
    const Account* former = findNamed(here, account.AcntName);
    if (former == nullptr) added.push_back(account.AcntName);
    if (former != nullptr && !isSame(*former, account)) changed.push_back(account.AcntName);
  }
  for (const Account& account : here) {
    if (findNamed(there, account.AcntName) == nullptr) gone.push_back(account.AcntName);
  }
  const std::string lines = named("New:  ", added) + named("Changed:  ", changed) + named("Removed:  ", gone);
  if (!lines.empty()) return "Accounts:" + std::string(lineEnd) + lines;
  return std::ranges::equal(here, there, isSame) ? "" : "Accounts:  another order" + std::string(lineEnd);
}

/// What makes the way to a server less safe is told first, and of each account.
std::string lostSafety(const MovedSettings& here, const MovedSettings& there) {
  std::vector<std::string> unsafe;
  for (const Account& account : there.accounts) {
    const Account* former = findNamed(here.accounts, account.AcntName);
    if (former != nullptr && former->AcntSecure == 1 && account.AcntSecure != 1) unsafe.push_back(account.AcntName);
  }
  const bool trustsAll = here.options.RefuseUntrusted == 1 && there.options.RefuseUntrusted != 1;
  return named("No secure connection any more:  ", unsafe, unsafe.size()) +
         (trustsAll ? "      Servers whose certificate can't be trusted are taken.\r\n" : "");
}

std::string optionChanges(const Options& here, const Options& there) {
  std::vector<std::string> changed;
  for (const OptionField* option : movedOptions()) {
    if (!isEqual(option->field, here, there)) changed.emplace_back(option->field.key);
  }
  return changed.empty() ? "" : "Options:" + std::string(lineEnd) + named("Changed:  ", changed, changed.size());
}

std::string rulesIn(const std::string& file) {
  constexpr std::size_t room = 16;
  const std::string count = Profile(file).GetPrivateProfileString("Rules", "RuleCount", "0", room);
  return std::to_string(std::max<std::int64_t>(text::toNumber(count).value_or(0), 0));
}

std::string ruleChanges(const std::string& here, const std::string& there) {
  if (here == there) return {};
  return "Rules:  " + rulesIn(there) + " of the file in place of " + rulesIn(here) + lineEnd;
}

}  // namespace

Question exportPasswords(std::string_view appTitle) {
  return {.text = std::string("The file will hold your accounts, options and rules.\r\n\r\n") +
                  "Shall it hold the passwords, too? They can be read by everybody\r\nwho gets hold of the file.\r\n",
          .title = std::string(appTitle) + " - Export",
          .buttons = Question::Buttons::YesNoCancel,
          .defaultsToNo = true};
}

Question exportDone(std::string_view appTitle, std::string_view path, bool withPasswords) {
  return notice(appTitle, "Export Successful",
                std::string(withPasswords ? "All settings, with the passwords, are in:"
                                          : "All settings, without passwords, are in:") +
                    lineEnd + std::string(path) + lineEnd);
}

Question exportTooLarge(std::string_view appTitle) {
  return notice(appTitle, "Export Error", "The settings and rules are more than 4 MB. Nothing was written.\r\n",
                Question::Icon::Critical);
}

Question importTooLarge(std::string_view appTitle) {
  return notice(appTitle, "Import Error",
                "The settings and rules that are here, or those of the file, are more than 4 MB.\r\n"
                "Nothing was imported.\r\n",
                Question::Icon::Critical);
}

Question exportLacksPassword(std::string_view appTitle, std::string_view account, std::string_view reason) {
  return notice(appTitle, "Export Error",
                "Nothing was exported, since the password of an account can't be had:\r\n" + std::string(account) +
                    lineEnd + std::string(reason) + lineEnd,
                Question::Icon::Critical);
}

Question importNotIntoKeyring(std::string_view appTitle, std::string_view reason) {
  return notice(
      appTitle, "Import Error",
      "Nothing was imported, since the keyring doesn't do what is needed:\r\n" + std::string(reason) + lineEnd,
      Question::Icon::Critical);
}

Question importRefused(std::string_view appTitle, std::optional<ParsedMoveFile::Fault> fault) {
  const char* reason = "The file can't be read, or is larger than 4 MB.";
  if (fault == ParsedMoveFile::Fault::Foreign) reason = "This is no file that the Export of this program has written.";
  if (fault == ParsedMoveFile::Fault::Newer) reason = "The file was written by a newer version of this program.";
  if (fault == ParsedMoveFile::Fault::Damaged)
    reason = "The file is damaged: something in it is missing or was changed.";
  return notice(appTitle, "Import Error", std::string(reason) + "\r\n\r\nNothing was changed.\r\n",
                Question::Icon::Critical);
}

std::optional<Question> importChanges(std::string_view appTitle, const MovedSettings& here,
                                      const MovedSettings& there) {
  const std::string changes = accountChanges(here.accounts, there.accounts) +
                              optionChanges(here.options, there.options) + ruleChanges(here.rules, there.rules);
  if (changes.empty()) return std::nullopt;
  const std::string lost = lostSafety(here, there);
  return Question{.text = "The file would change this:\r\n\r\n" + (lost.empty() ? "" : "Safety:\r\n" + lost) + changes +
                          "\r\nAccounts without a password in the file keep the one that they have here.\r\n"
                          "A copy of all that is here now will be kept.\r\n\r\nImport the file?\r\n",
                  .title = std::string(appTitle) + " - Import",
                  .buttons = Question::Buttons::YesNo,
                  .defaultsToNo = true};
}

Question importChangesNothing(std::string_view appTitle) {
  return notice(appTitle, "Import", "All that the file holds is here already. Nothing was changed.\r\n");
}

Question importDone(std::string_view appTitle, std::string_view copy, bool usesKeyring) {
  return notice(appTitle, "Import Successful",
                "The settings of the file are in force.\r\n\r\nWhat was here before is kept in:\r\n" +
                    std::string(copy) + lineEnd +
                    (usesKeyring ? "The passwords in it are those that the settings file held; the others are still in "
                                   "the keyring."
                                 : "All passwords are in it.") +
                    "\r\nImport it to have that back, or delete it.\r\n");
}

}  // namespace velmora
