#include "app/move_settings.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "accounts/accounts_page.h"
#include "accounts/decisions/keyring_spares.h"
#include "accounts/decisions/keyring_texts.h"
#include "accounts/keyring_entries.h"
#include "accounts/load_accounts.h"
#include "accounts/read_password.h"
#include "app/decisions/carry_over.h"
#include "app/decisions/move_file.h"
#include "app/decisions/move_texts.h"
#include "app/pages.h"
#include "app/program.h"
#include "checking/hold_timers.h"
#include "messages/preview.h"
#include "options/keep_settings.h"
#include "options/save_options.h"
#include "platform/failure.h"
#include "platform/set_for_now.h"
#include "platform/text.h"
#include "rules/rule_report.h"
#include "rules/rules_page.h"
#include "rules/save_rules.h"

namespace velmora {

namespace {

constexpr const char* filter = "Velmora Settings (*.velmora)|*.velmora|";

/// As the settings hold it: what the desktop's keyring has is named by its key alone.
MovedSettings allThatIsHere(const Program& program) {
  MovedSettings here{.options = program.options, .accounts = {}, .rules = {}};
  for (const std::int16_t number : program.accounts.numbers()) {
    Account& account = here.accounts.emplace_back(program.accounts[number]);
    if (!account.AcntKeyringKey.empty()) account.AcntPassword.clear();
  }
  here.rules = program.platform.readFile(program.rulesFile.path).value_or("");
  return here;
}

/// A keyring's key means nothing elsewhere. Where the keyring doesn't give a password, nothing is to be exported, or
/// the user would miss it when it is too late.
bool putPasswords(Program& program, MovedSettings& moved, bool wanted) {
  const KeepingPasswords keeping(program);
  std::int16_t number = 0;
  for (Account& account : moved.accounts) {
    account.AcntKeyringKey.clear();
    try {
      account.AcntPassword = wanted ? PasswordOf(program, ++number) : std::string();
    } catch (const PopFailure& failure) {
      program.platform.MsgBox(exportLacksPassword(program.AppTitle, account.AcntName, failure.what()));
      return false;
    }
  }
  return true;
}

void tellUnwritten(Program& program, std::string_view loss, const std::string& path) {
  TellNotSaved(program, loss, "The disk may be full, or this file or its folder read-only:\r\n" + path);
}

void askAndExport(Program& program) {
  const Answer answer = program.platform.MsgBox(exportPasswords(program.AppTitle));
  if (answer == Answer::Cancel) return;
  MovedSettings moved = allThatIsHere(program);
  if (!putPasswords(program, moved, answer == Answer::Yes)) return;
  const std::string text = composeMoveFile(moved);
  if (text.size() > largestReadFile) {
    program.platform.MsgBox(exportTooLarge(program.AppTitle));
    return;
  }
  const std::string name = "Velmora " + formatDateTime(program.platform.now(), "yyyy-mm-dd") + ".velmora";
  const auto path = program.platform.askForFile({.name = name, .filter = filter, .forUser = true});
  if (!path) return;
  if (program.platform.writeFile(*path, text)) {
    program.platform.MsgBox(exportDone(program.AppTitle, *path, answer == Answer::Yes));
  } else {
    tellUnwritten(program, "Nothing was exported.", *path);
  }
}

/// A key of the file counts where the same mailbox has it here. One that another mailbox has is none of this account's.
/// What any other leads to is read now, so that nothing is kept that may not be there. Returns whether the keyring
/// told.
bool followKey(Program& program, const MovedSettings& here, Account& account) {
  const std::string key = std::exchange(account.AcntKeyringKey, {});
  if (key.empty() || !account.AcntPassword.empty()) return true;
  const auto user = std::ranges::find(here.accounts, key, &Account::AcntKeyringKey);
  if (user != here.accounts.end()) {
    if (isSameMailbox(*user, account)) account.AcntKeyringKey = key;
    return true;
  }
  const KeyringAnswer answer = program.platform.keyring().read(key);
  if (answer.isDone()) account.AcntPassword = answer.password;
  if (answer.isDone() || answer.outcome == KeyringAnswer::Outcome::NotFound) return true;
  program.platform.MsgBox(importNotIntoKeyring(program.AppTitle, keyringTrouble(answer)));
  return false;
}

bool goOnFromHere(Program& program, const MovedSettings& here, MovedSettings& there) {
  const KeepingPasswords keeping(program);
  for (Account& account : there.accounts) {
    if (!followKey(program, here, account)) return false;
  }
  carryOver(here, there);
  return true;
}

/// A file beside the program's others whose name none has yet.
std::string freshFile(Program& program, const std::string& stem, const std::string& ending) {
  std::string name = stem + ending;
  for (int n = 2; program.platform.fileExists(program.platform.programFile(name)); ++n) {
    name = std::string(stem).append(" ").append(std::to_string(n)).append(ending);
  }
  return name;
}

/// Files that lead nowhere unless the settings do. They go again where nothing is imported after all.
class LaidFiles {
 public:
  explicit LaidFiles(Program& program) : program_(program) {}
  ~LaidFiles() {
    for (const std::string& path : paths_) program_.platform.deleteFile(path);
  }
  LaidFiles(const LaidFiles&) = delete;
  LaidFiles& operator=(const LaidFiles&) = delete;

  bool lay(const std::string& name, std::string_view content) {
    const std::string path = program_.platform.programFile(name);
    if (content.size() > largestReadFile) {
      program_.platform.MsgBox(importTooLarge(program_.AppTitle));
      return false;
    }
    if (program_.platform.writeFile(path, content)) {
      paths_.push_back(path);
      return true;
    }
    tellUnwritten(program_, "Nothing was imported.", path);
    return false;
  }

  void keep() { paths_.clear(); }

 private:
  Program& program_;
  std::vector<std::string> paths_;
};

std::string nameOfCopy(Program& program) {
  const std::string time = formatDateTime(program.platform.now(), "yyyy-mm-dd hh:mm");
  return freshFile(program, "Before Import " + text::replaceAll(time, ":", "-"), ".velmora");
}

/// Where the user keeps passwords in the desktop's keyring, those that come go there, too. Until the settings name them
/// they are spare.
bool moveIntoKeyring(Program& program, MovedSettings& there) {
  std::vector<KeyringEntry> entries;
  if (program.options.UseKeyring != 1) return true;
  std::int16_t number = 0;
  for (Account& account : there.accounts) {
    ++number;
    if (!account.AcntKeyringKey.empty() || account.AcntPassword.empty()) continue;
    account.AcntKeyringKey = freshKeyringKey();
    entries.push_back({number, account.AcntKeyringKey, account.AcntPassword});
  }
  const auto trouble = WriteEntries(program, entries);
  if (trouble) program.platform.MsgBox(importNotIntoKeyring(program.AppTitle, *trouble));
  return !trouble;
}

bool keepImported(Program& program, const MovedSettings& there, const std::string& rulesName) {
  SettingsStore& settings = program.platform.settings();
  KeyringKeys keys;
  for (const Account& account : there.accounts) keys.push_back(account.AcntKeyringKey);
  takeKeyringSpares(settings, keys);
  for (const std::int16_t number : program.accounts.numbers()) Accounts::DeleteAccountFields(settings, number);
  std::int16_t number = 0;
  for (const Account& account : there.accounts) Accounts::SaveAccountFields(settings, ++number, account);
  settings.SaveSetting(settingsSection, "AcntNum", std::to_string(number));
  writeOptions(settings, there.options);
  settings.SaveSetting(optionsSection, "RulesIniFileName", rulesName);
  return KeepSettings(program, "Nothing was imported.");
}

/// What is in force follows what was kept. Of the mailboxes nothing is known any more.
void takeImported(Program& program, const MovedSettings& there, const std::string& rulesName) {
  frmPreview_Unload(program);
  frmRuleReport_Unload(program);
  {
    const SetForNow busy(program.acnts.AcntBusy, true);
    LoadAccounts(program, static_cast<std::int16_t>(there.accounts.size()));
  }
  program.options.RulesIniFileName = program.EditOptions.RulesIniFileName = rulesName;
  StartRules(program);
  FillRuleAccounts(program);
  LoadRulePage(program);
  takeOver(there.options, program.EditOptions);
  SaveOptions(program);
  ShowAccount(program, program.accounts.AcntCurrent);
  if (program.accounts.AcntCurrent > 0) ShowTabAnew(program, program.accounts.AcntCurrent);
}

/// Lays down what the settings will lead to, and then has them do so. Returns the place of the copy of what was there.
std::optional<std::string> bringIn(Program& program, const MovedSettings& here, MovedSettings& there,
                                   std::string& rulesName) {
  const KeepingPasswords keeping(program);
  if (!KeepSettings(program, "Nothing was imported.")) return std::nullopt;
  LaidFiles laid(program);
  const std::string copy = nameOfCopy(program);
  if (!laid.lay(copy, composeMoveFile(here))) return std::nullopt;
  if (there.rules != here.rules) {
    rulesName = freshFile(program, "Rules Imported", ".ini");
    if (!laid.lay(rulesName, there.rules)) return std::nullopt;
  }
  const bool isIn = moveIntoKeyring(program, there) && program.activity != Activity::Ending &&
                    keepImported(program, there, rulesName);
  if (!isIn) {
    RemoveSpareEntries(program);
    return std::nullopt;
  }
  laid.keep();
  return program.platform.programFile(copy);
}

void importFrom(Program& program, const std::string& path) {
  const auto text = program.platform.readFile(path);
  ParsedMoveFile file;
  if (text) file = parseMoveFile(*text, program.options);
  if (!text || file.fault != ParsedMoveFile::Fault::None) {
    program.platform.MsgBox(importRefused(program.AppTitle, text ? std::optional(file.fault) : std::nullopt));
    return;
  }
  const MovedSettings here = allThatIsHere(program);
  if (!goOnFromHere(program, here, file.moved)) return;
  const auto changes = importChanges(program.AppTitle, here, file.moved);
  if (!changes) {
    program.platform.MsgBox(importChangesNothing(program.AppTitle));
    return;
  }
  if (program.platform.MsgBox(*changes) != Answer::Yes) return;
  std::string rulesName = program.options.RulesIniFileName;
  const auto copy = bringIn(program, here, file.moved, rulesName);
  if (!copy) return;
  takeImported(program, file.moved, rulesName);
  program.platform.MsgBox(importDone(program.AppTitle, *copy, program.options.UseKeyring == 1));
}

void tbrOptMove_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "Export") ExportSettings(program);
  if (button.Key == "Import") ImportSettings(program);
}

}  // namespace

void ConnectMoveSettings(Program& program) {
  program.frmMain.tbrOptMove.ButtonClick = [&program](Button& button) { tbrOptMove_ButtonClick(program, button); };
}

void ExportSettings(Program& program) {
  const HoldTimers held(program);
  askAndExport(program);
}

void ImportSettings(Program& program) {
  const HoldTimers held(program);
  const auto path = program.platform.askForFile({"", filter, FileQuestion::Purpose::Open});
  if (path) importFrom(program, *path);
}

}  // namespace velmora
