#pragma once

#include <gmock/gmock.h>

#include <algorithm>

#include "support/random_steps.h"

namespace velmora::test {

using Texts = std::vector<std::string>;
using Tree = std::map<std::string, std::string>;

/// What the user types into a box, and the value that it stands for.
struct Input {
  TextBox AccountsPage::*box;
  std::string Account::*member;
  Texts texts;
};

inline constexpr const char* defaultClient = "/opt/default.exe";
inline constexpr const char* defaultSound = "/opt/default.wav";
inline const Texts names = {"",       " ",      "Work",   "WORK",   "No",           "\"Work\"",
                            "Zürich", "ZÜRICH", "Straße", "sTRAßE", "All Accounts", "new account2"};
inline const Texts paths = {"/opt/a.exe", "C:\\Mail\\B.EXE", "/opt/a.wav", "C:\\Mail\\B.WAV", "/opt/a.txt", ""};

/// The first four suffice for a check.
inline const std::vector<Input> inputs = {
    {&AccountsPage::txtAcntServer, &Account::AcntServer, {"Alpha", "Beta", "Gamma", "", "nowhere", "Müller"}},
    {&AccountsPage::txtAcntPort, &Account::AcntPort, {"110", "995", "", "pop"}},
    {&AccountsPage::txtAcntLoginID, &Account::AcntLoginID, {"user", "", "Üser"}},
    {&AccountsPage::txtAcntPassword, &Account::AcntPassword, {"secret", " pass=\"word\" "}},
    {&AccountsPage::txtAcntName, &Account::AcntName, names},
    {&AccountsPage::txtAcntClient, &Account::AcntClient, paths},
    {&AccountsPage::txtAcntSound, &Account::AcntSound, paths}};
inline const std::vector<std::pair<CheckBox AccountsPage::*, std::int16_t Account::*>> ticks = {
    {&AccountsPage::chkAcntEnabled, &Account::AcntEnabled},
    {&AccountsPage::chkAcntSecure, &Account::AcntSecure},
    {&AccountsPage::chkAcntSoundOn, &Account::AcntSoundOn}};
inline constexpr std::array colours = {0xFF0000, 0xFFFF00, 0x00FF00, 0xFF00FF, 0x0000FF, 0x000000};

/// In upper case, as far as the texts above need it.
inline std::string folded(std::string text) {
  for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  const auto at = text.find("ü");
  return at == std::string::npos ? text : text.replace(at, 2, "Ü");
}

/// The values of an account as the settings tree holds them under its number.
inline Tree kept(const Account& account, const std::string& number = "") {
  MemorySettings tree;
  for (const auto& field : accountFields()) saveField(tree, {"Settings", number}, field, account);
  return tree.values;
}

/// An account, and its messages by their subjects, which are their identifiers too.
struct Model : Accounts::Row {
  Texts rows;    ///< as they are listed
  Texts before;  ///< what stood at each number after the check before

  std::string caption() const { return rows.empty() ? AcntName : AcntName + "  (" + std::to_string(rows.size()) + ")"; }
  std::string picture() const {
    const std::string state = AcntChecked && !AcntConnected ? "MailError" : rows.empty() ? "MailNo" : "MailYes";
    return AcntEnabled != 0 ? state : state + "Disabled";
  }
};

inline std::string learnt(const AccountState& state) {
  std::string all = state.AcntStatusText + "|" + state.AcntLastCheckTime + "|" + state.AcntLastCheckText;
  for (const auto count : {&AccountState::AcntMsgCount, &AccountState::AcntNewCount, &AccountState::AcntPrevCount,
                           &AccountState::AcntSpamCount, &AccountState::AcntDeleteCount})
    all += " " + std::to_string(state.*count);
  for (const auto flag : {&AccountState::AcntConnected, &AccountState::AcntChecked, &AccountState::AcntHasMessages,
                          &AccountState::AcntHasNew, &AccountState::AcntSoundValid, &AccountState::AcntClientValid})
    all += state.*flag ? " yes" : " no";
  return all;
}

/// What becomes of the accounts, written down plainly: each function does to them what the program should do to its
/// own. It also scripts the answers to the questions that come up meanwhile, and notes them.
class PlainAccounts : public RandomSteps {
 protected:
  void keepAccount(const std::string& name) {
    Model& account = accounts_.emplace_back();
    account.AcntName = account.AcntServer = name;
    account.AcntLoginID = "user";
    account.AcntPassword = "secret";
    platform.tree.values.merge(kept(account, std::to_string(count())));
    set("Settings/AcntNum", std::to_string(count()));
    counted_ = true;
  }

  std::size_t count() const { return accounts_.size() - 1; }
  Model& current() { return accounts_[current_]; }
  bool dirty() {
    Account page = page_;
    page.AcntColourIndex = accounts_[onPage_].AcntColourIndex;
    return kept(page) != kept(accounts_[onPage_]);
  }
  bool isFile(const std::string& path, const std::string& ending) {
    return path.size() > 4 && folded(path.substr(path.size() - 4)) == ending && platform.files.contains(path);
  }
  std::string now(const char* pattern) { return formatDateTime(platform.clock, pattern, platform.monthNames()); }
  void expectDialog(const std::string& title, const std::string& says = "", Answer answer = Answer::Ok) {
    dialogs_.emplace_back(title, says);
    platform.answers.push_back(answer);
  }

  void followFiles(Account& account, bool client, bool sound) {
    if (client) current().AcntClientValid = isFile(account.AcntClient, ".EXE");
    if (sound) current().AcntSoundValid = isFile(account.AcntSound, ".WAV");
  }
  void show(std::size_t number) {
    current_ = onPage_ = acntTab_ = number;
    page_ = current();
    hidesClient_ = hasClient_;
    hidesSound_ = hasSound_;
    followFiles(page_, true, true);
    seesTick_ = !hidesSound_ && current().AcntSoundValid;
    if (number > 0) selectEmailTab(number);
  }
  void list(std::size_t number) {
    listed_ = number;
    panels_ = {accounts_[number].AcntStatusText, accounts_[number].AcntLastCheckText};
  }
  void selectEmailTab(std::size_t number) {
    current_ = number;
    if (number != listed_) list(number);
  }
  void showAll(std::size_t number) {
    show(number);
    list(number);
  }
  void showNone() {
    show(0);
    listed_ = 0;
    panels_ = {"No Accounts have been created...", ""};
  }
  void takeDefaults() {
    hasClient_ = isFile(defaultClient, ".EXE");
    hasSound_ = isFile(defaultSound, ".WAV");
  }

  void begin() {
    takeDefaults();
    for (current_ = count(); current_ > 0; --current_) {
      current().rows = current().before = {};
      static_cast<AccountState&>(current()) = {};
      current().AcntStatusText = current().AcntName;
      current().AcntLastCheckTime = now("h:mm AM/PM");
      current().AcntLastCheckText = "Not Checked";
      followFiles(current(), true, true);
    }
    shownPage_ = emailPage;
    live_ = working_ = stored_;
    countsDown_ = startsUp_ && count() > 0;
    count() > 0 ? showAll(1) : showNone();
    start();
  }

  void modelSave() {
    Model& account = current();
    const auto isNamesake = [&](const Model& each) {
      return each.AcntName != account.AcntName && folded(each.AcntName) == folded(page_.AcntName);
    };
    if (page_.AcntName.find_first_not_of(' ') == std::string::npos) return expectDialog("Blank Account Name");
    if (std::any_of(accounts_.begin(), accounts_.end(), isNamesake))
      return expectDialog("Duplicate Account Name", "'" + page_.AcntName + "'");
    const bool isForAll = account.AcntName == "All Accounts" || page_.AcntName == "All Accounts";
    for (Texts* rules : {&live_, &working_})
      if (!isForAll) std::replace(rules->begin(), rules->end(), account.AcntName, page_.AcntName);
    account.AcntStatusText.replace(0, account.AcntName.size(), page_.AcntName);
    const Account before = std::exchange(static_cast<Account&>(account), page_);
    if (hasClient_) account.AcntClient = before.AcntClient;
    if (hasSound_) std::tie(account.AcntSound, account.AcntSoundOn) = std::tie(before.AcntSound, before.AcntSoundOn);
    followFiles(account, !hasClient_, !hasSound_);
    show(current_);
    panels_[0] = account.AcntStatusText;
  }

  bool isReached(const Account& account) {
    const auto server = platform.servers.find(account.AcntServer);
    return server != platform.servers.end() && (account.AcntPort == "110" || account.AcntPort == "995") &&
           account.AcntLoginID == "user" && account.AcntPassword == "secret" &&
           !server->second.answers.contains("PASS");
  }

  /// Every other rule marks as spam what has an S in its subject, the rest for deletion what has a D.
  std::int16_t marks(const Model& account, std::size_t kind) {
    for (std::size_t i = kind; i < live_.size(); i += 2)
      if (live_[i] == account.AcntName || live_[i] == "All Accounts")
        return static_cast<std::int16_t>(
            std::count_if(account.rows.begin(), account.rows.end(), [&](auto& row) { return row[0] == "SD"[kind]; }));
    return 0;
  }

  void modelCheck(Model& account) {
    const bool reached = isReached(account);
    Texts subjects;
    if (reached)
      for (const auto& mail : platform.servers[account.AcntServer].messages) subjects.push_back(mail.uid);
    const bool breaks = !subjects.empty() && platform.servers[account.AcntServer].answers.contains("RETR");
    if (breaks) subjects.clear();
    std::sort(subjects.begin(), subjects.end());
    account.rows.clear();
    account.before.resize(std::max(account.before.size(), subjects.size()));
    const auto end = account.before.begin() + static_cast<long>(subjects.size());
    for (const std::string& subject : subjects)
      account.rows.push_back(subject + (std::find(account.before.begin(), end, subject) == end ? " new" : ""));
    std::copy(subjects.begin(), subjects.end(), account.before.begin());
    const auto size = static_cast<std::int16_t>(subjects.size());
    const auto growth = static_cast<std::int16_t>(std::max(0, size - account.AcntPrevCount));
    account.AcntChecked = true;
    account.AcntConnected = reached && !breaks;
    account.AcntHasNew = growth > 0;
    account.AcntHasMessages = size > 0;
    account.AcntMsgCount = size;
    account.AcntNewCount = growth;
    account.AcntPrevCount = static_cast<std::int16_t>(account.AcntPrevCount + growth);
    account.AcntSpamCount = marks(account, 0);
    account.AcntDeleteCount = marks(account, 1);
    const std::string found = size == 0 ? "No Messages" : std::to_string(size) + (size == 1 ? " Message" : " Messages");
    account.AcntStatusText = account.AcntName + " - " + (account.AcntConnected ? found : "Error Accessing Account");
    account.AcntLastCheckTime = now("h:mm AM/PM");
    account.AcntLastCheckText = "Checked at: " + account.AcntLastCheckTime;
    if (!account.AcntConnected)
      expectDialog(breaks ? "Velmora - Error Processing Messages" : "Velmora - Error Establishing Connection",
                   "Account: " + account.AcntName + " ");
  }

  /// What is heard after a check of one account, or of all.
  void modelSounds(std::size_t only = 0) {
    for (std::size_t i = 1; i <= count(); ++i) {
      const Model& each = accounts_[i];
      const bool oneForAll = only == 0 && hasSound_;
      const bool takesPart = only == 0 ? each.AcntEnabled != 0 : i == only;
      const bool wanted = showEmail_ == 2 || (showEmail_ == 1 ? each.AcntHasMessages : each.AcntHasNew);
      if (!takesPart || !wanted || (each.AcntSoundOn == 0 && !oneForAll)) continue;
      const std::string own = each.AcntSoundValid ? each.AcntSound : "";
      const std::string failed = each.AcntSoundOn != 0 ? "/home/Sounds/Error.wav" : "";
      const std::string found = hasSound_ ? defaultSound : own;
      heard_.push_back(each.AcntConnected ? found : failed);
      if (oneForAll) break;
    }
    std::erase(heard_, "");
  }

  void modelCheckAll(bool byUser) {
    const auto isEnabled = [](const Model& each) { return each.AcntEnabled != 0; };
    if (byUser && std::none_of(accounts_.begin(), accounts_.end(), isEnabled))
      expectDialog("Velmora - No Accounts Checked");
    for (Model& each : accounts_)
      if (isEnabled(each)) modelCheck(each);
    modelSounds();
    countsDown_ = false;
    list(current_);
    if (shownPage_ == accountsPage && !dirty()) show(current_);
  }

  void modelSwap(std::size_t other) {
    std::swap(current(), accounts_[other]);
    showAll(other);
  }

  int delivered_ = 0;
  std::vector<Model> accounts_{1};        ///< by number; the first stands for none
  std::size_t current_ = 0, listed_ = 0;  ///< `listed_`: the account whose tab filled the list last
  std::int16_t shownPage_ = emailPage;
  Account page_;                                   ///< the Accounts page
  std::size_t acntTab_ = 0;                        ///< the tab of the Accounts page
  std::size_t onPage_ = 0;                         ///< its account; the Email page may have gone on to another
  bool hasClient_ = false, hasSound_ = false;      ///< a default serves all accounts
  bool hidesClient_ = false, hidesSound_ = false;  ///< it did when the page was filled
  bool seesTick_ = false, counted_ = false, autoCheck_ = true, startsUp_ = true, countsDown_ = false;
  unsigned showEmail_ = 0;                                    ///< that option
  Texts heard_;                                               ///< sounds, by path
  Texts live_, working_, stored_;                             ///< the rules' accounts
  std::array<std::string, 2> panels_;                         ///< the first and the third
  std::vector<std::pair<std::string, std::string>> dialogs_;  ///< titles, and what their texts hold
};

}  // namespace velmora::test
