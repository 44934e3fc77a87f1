#include <gmock/gmock.h>

#include <algorithm>

#include "support/random_steps.h"

namespace velmora {
namespace {

using test::MemorySettings;
using Texts = std::vector<std::string>;
using Tree = std::map<std::string, std::string>;

/// What the user types into a box, and the value that it stands for.
struct Input {
  TextBox AccountsPage::*box;
  std::string Account::*member;
  Texts texts;
};

const Texts names = {"", " ", "Work", "WORK", "No", "\"Work\"", "Zürich", "ZÜRICH", "Straße", "sTRAßE", "new account2"};
const Texts paths = {"/opt/a.exe", "C:\\Mail\\B.EXE", "/opt/a.wav", "C:\\Mail\\B.WAV", "/opt/a.txt", ""};
const std::vector<Input> inputs = {
    {&AccountsPage::txtAcntServer, &Account::AcntServer, {"Alpha", "Beta", "", "Müller"}},
    {&AccountsPage::txtAcntPort, &Account::AcntPort, {"110", "995", "", "pop"}},
    {&AccountsPage::txtAcntLoginID, &Account::AcntLoginID, {"user", "", "Üser"}},
    {&AccountsPage::txtAcntPassword, &Account::AcntPassword, {"secret", " pass=\"word\" "}},
    {&AccountsPage::txtAcntName, &Account::AcntName, names},
    {&AccountsPage::txtAcntClient, &Account::AcntClient, paths},
    {&AccountsPage::txtAcntSound, &Account::AcntSound, paths}};
const std::vector<std::pair<CheckBox AccountsPage::*, std::int16_t Account::*>> ticks = {
    {&AccountsPage::chkAcntEnabled, &Account::AcntEnabled},
    {&AccountsPage::chkAcntSecure, &Account::AcntSecure},
    {&AccountsPage::chkAcntSoundOn, &Account::AcntSoundOn}};
constexpr std::array colours = {0xFF0000, 0xFFFF00, 0x00FF00, 0xFF00FF, 0x0000FF, 0x000000};

/// In upper case, as far as the texts above need it.
std::string folded(std::string text) {
  for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  const auto at = text.find("ü");
  return at == std::string::npos ? text : text.replace(at, 2, "Ü");
}

/// The values of an account as the settings tree holds them under its number.
Tree kept(const Account& account, const std::string& number = "") {
  MemorySettings tree;
  for (const auto& field : accountFields()) saveField(tree, {"Settings", number}, field, account);
  return tree.values;
}

std::string learnt(const AccountState& state) {
  std::string all = state.AcntStatusText + "|" + state.AcntLastCheckTime + "|" + state.AcntLastCheckText;
  for (const auto count : {&AccountState::AcntMsgCount, &AccountState::AcntNewCount, &AccountState::AcntPrevCount,
                           &AccountState::AcntSpamCount, &AccountState::AcntDeleteCount})
    all += " " + std::to_string(state.*count);
  for (const auto flag : {&AccountState::AcntConnected, &AccountState::AcntChecked, &AccountState::AcntHasMessages,
                          &AccountState::AcntHasNew, &AccountState::AcntSoundValid, &AccountState::AcntClientValid})
    all += state.*flag ? " yes" : " no";
  return all;
}

/// An account, and its messages by their subjects.
struct Model : Accounts::Row {
  Texts rows;

  std::string caption() const { return rows.empty() ? AcntName : AcntName + "  (" + std::to_string(rows.size()) + ")"; }
  std::string picture() const {
    const std::string state = AcntChecked && !AcntConnected ? "MailError" : rows.empty() ? "MailNo" : "MailYes";
    return AcntEnabled != 0 ? state : state + "Disabled";
  }
};

/// Does the same to the program and to a model of its accounts, each step first to the model. Only what checks find is
/// taken over from the program.
class AccountModel : public test::RandomSteps {
 protected:
  void SetUp() override {
    platform.files = {paths.begin(), paths.end() - 1};
    for (const auto* name : {"Alpha", "Beta", "Gamma"})
      if (GetParam() % 3 != 0) addAccount(name);
    counted_ = GetParam() % 3 != 0;
    for (std::size_t i = 1; counted_ && i <= 3; ++i) platform.tree.values.merge(kept(Account(), std::to_string(i)));
    start();
    accounts_[0].AcntEnabled = 0;
    accounts_[0].AcntName = accounts_[0].AcntPort = "";
    for (std::int16_t number = 1; number <= program.accounts.AcntNum(); ++number) {
      static_cast<Accounts::Row&>(accounts_.emplace_back()) = program.accounts[number];
    }
    show(std::min<std::size_t>(1, count()));
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
  void expectDialog(const std::string& title, const std::string& says, Answer answer = Answer::Ok) {
    dialogs_.emplace_back(title, says);
    platform.answers.push_back(answer);
  }
  void followFiles(const Account& account) {
    current().AcntClientValid = isFile(account.AcntClient, ".EXE");
    current().AcntSoundValid = isFile(account.AcntSound, ".WAV");
  }
  void show(std::size_t number) {
    current_ = onPage_ = number;
    page_ = static_cast<const Account&>(current());
    followFiles(page_);
  }

  void goTo(std::int16_t page) {
    if (!dirty()) shownPage_ = page;
    if (!dirty() && page == accountsPage && count() > 0) show(current_);
    program.frmMain.tbrMainButtons[PageBanners[static_cast<std::size_t>(page)]].click();
  }
  /// Whether the page shows now.
  bool reach(std::int16_t page) {
    if (shownPage_ != page) goTo(page);
    return shownPage_ == page;
  }

  void add() {
    reach(accountsPage);
    if (!dirty() && count() > 4) return;
    if (!dirty()) {
      Texts taken;
      for (const Model& each : accounts_) taken.push_back(folded(each.AcntName));
      int k = 1;
      while (std::count(taken.begin(), taken.end(), "NEW ACCOUNT" + std::to_string(k)) > 0) ++k;
      Model& account = accounts_.emplace_back();
      account.AcntStatusText = account.AcntName = "New Account" + std::to_string(k);
      account.AcntLastCheckText = "Not Checked";
      account.AcntLastCheckTime = "4:21:05 PM";
      show(count());
      counted_ = true;
    }
    program.frmMain.tbrAcnts["AcntAdd"].click();
  }

  void typeInto(const Input& input, const std::string& text) {
    page_.*input.member = text;
    followFiles(page_);
    (program.frmMain.*input.box).Text = text;
  }
  /// Something else, or what was there before.
  void type() {
    if (!reach(accountsPage) || count() == 0) return;
    const auto& [tick, ticked] = ticks[random(ticks.size())];
    if (ticked != &Account::AcntSoundOn || current().AcntSoundValid)
      (program.frmMain.*tick).Value = page_.*ticked = static_cast<std::int16_t>(random(2));
    if (oneIn(8)) {
      const std::size_t box = random(colours.size());
      page_.AcntColour = colours[box];
      page_.AcntColourIndex = static_cast<std::int32_t>(box + 1);
      program.frmMain.lblColourBox[box].Click();
    }
    const Input& input = inputs[oneIn(4) ? 4 : random(inputs.size())];
    typeInto(input, oneIn(4) ? current().*input.member : input.texts[random(input.texts.size())]);
  }
  void save() {
    if (dirty()) modelSave();
    program.frmMain.tbrButtons[saveAccountBar]["SaveAccount"].click();
  }
  void modelSave() {
    Model& account = current();
    const auto isNamesake = [&](const Model& each) {
      return each.AcntName != account.AcntName && folded(each.AcntName) == folded(page_.AcntName);
    };
    if (page_.AcntName.find_first_not_of(' ') == std::string::npos) return expectDialog("Blank Account Name", "");
    if (std::any_of(accounts_.begin(), accounts_.end(), isNamesake))
      return expectDialog("Duplicate Account Name", "'" + page_.AcntName + "'");
    account.AcntStatusText.replace(0, account.AcntName.size(), page_.AcntName);
    static_cast<Account&>(account) = page_;
    show(current_);
  }
  void cancel() {
    if (dirty()) show(current_);
    program.frmMain.tbrButtons[cancelAccountBar]["Cancel"].click();
  }

  void remove() {
    reach(accountsPage);
    if (count() > 0 && !dirty()) {
      const Answer answer = std::array{Answer::Yes, Answer::Yes, Answer::No, Answer::Ok}[random(4)];
      expectDialog("Delete Account - Proceed With Caution", "'" + current().AcntName + "'", answer);
      if (answer == Answer::Yes) accounts_.erase(accounts_.begin() + static_cast<long>(current_));
      if (answer == Answer::Yes) show(std::min(current_, count()));
    }
    program.frmMain.tbrAcnts["AcntDelete"].click();
  }
  void removeAll() {
    for (std::size_t left = 2 * count(); left > 0; --left) remove();
  }

  void modelSwap(std::size_t other) {
    std::swap(current(), accounts_[other]);
    show(other);
  }
  void move() {
    reach(accountsPage);
    const bool back = oneIn(2);
    if (!dirty() && count() > 1 && current_ != (back ? 1 : count())) modelSwap(back ? current_ - 1 : current_ + 1);
    program.frmMain.tbrMoveButtons[back ? "Backward" : "Forward"].click();
  }

  void modelPress(bool onEmail, MouseButton button, std::size_t target) {
    const bool clicks = button == MouseButton::Left;
    if (!dirty()) {
      if (clicks || target != current_) onEmail ? void(current_ = target) : show(target);
    } else if (clicks && target != current_) {
      const Answer answer = std::array{Answer::Yes, Answer::No, Answer::Cancel}[random(3)];
      expectDialog("Changes Not Saved!", "'" + current().AcntName + "'", answer);
      if (answer == Answer::Yes) modelSave();
      if (answer == Answer::No) return;
      show(current_);  // a name that isn't taken is lost, too
      show(target);
    }
  }

  /// Presses a tab as the desktop tells of it, and perhaps holds it long enough to drag it somewhere.
  void press() {
    const bool onEmail = !dirty() && oneIn(2);
    reach(onEmail ? emailPage : accountsPage);
    TabStrip& strip = onEmail ? program.frmMain.TabStripEmail : program.frmMain.TabStripAcnts;
    strip.Height = 20;
    std::vector<std::int32_t> edges = {0};
    for (int tab = 1; tab <= strip.Count(); ++tab)
      edges.push_back(edges.back() + (strip.Tabs(tab).Width = static_cast<std::int32_t>(10 + random(50))));
    const auto within = [&](std::size_t tab) {
      if (tab == 0) return edges.back();
      return oneIn(2) ? edges[tab - 1] : edges[tab] - 1;
    };
    const std::size_t pressed = random(edges.size());
    const MouseButton button = std::array{MouseButton::Left, MouseButton::Middle, MouseButton::Right}[random(5) / 2];
    const bool wasSelected = strip.SelectedItem() == static_cast<int>(pressed);
    const bool presses = button != MouseButton::Right && pressed > 0 && count() > 0;
    bool drags = presses && !dirty();
    if (presses) modelPress(onEmail, button, pressed);
    strip.BeforeClick();
    strip.MouseDown(button, within(pressed));
    if (button == MouseButton::Left && pressed > 0)
      wasSelected ? strip.Click() : strip.SelectTab(static_cast<int>(pressed));
    if (oneIn(3)) return strip.MouseUp();
    if (!onEmail && oneIn(6)) type();
    drags = drags && !dirty();
    program.frmMain.tmrDragTab.tick();
    EXPECT_EQ(strip.Dragging.get(), drags);
    if (!onEmail && oneIn(6)) type();
    drop(strip, random(edges.size()), within, drags);
  }
  void drop(TabStrip& strip, std::size_t target, const auto& within, bool drags) {
    const std::int32_t x = target == 0 && oneIn(2) ? -1 : within(target);
    const auto y = static_cast<std::int32_t>(random(40)) - 10;
    if (drags && target > 0 && target != current_ && !dirty()) modelSwap(target);
    if (strip.Dragging) strip.DragOver(x, y);
    strip.MouseUp();
    if (!strip.Dragging) return;
    EXPECT_EQ(strip.DragIcon.get(), x >= 0 && y >= 0 && y <= strip.Height ? 1 : 2);
    strip.Dragging = false;
    if (x >= 0) strip.DragDrop(x);
  }

  /// Mail comes in, and the accounts learn of it.
  void check() {
    if (!reach(emailPage) || count() == 0) return;
    for (const auto* host : {"Alpha", "Beta"})
      if (oneIn(2)) platform.servers[host].messages.push_back(test::message("u" + std::to_string(++delivered_)));
    platform.clock.minute = static_cast<int>(random(60));
    RunningProgram::check();
    platform.asked.clear();
    const AccountState& found = program.accounts[program.accounts.AcntCurrent];
    static_cast<AccountState&>(current()) = found;
    current().rows.clear();
    for (const auto& row : program.frmMain.lvwEmail.Rows()) current().rows.push_back(row.Cells[2]);
    platform.clock.minute = 21;
  }

  void compareAccount(std::int16_t number) {
    const Model& model = accounts_[static_cast<std::size_t>(number)];
    SCOPED_TRACE(model.AcntName);
    EXPECT_EQ(kept(program.accounts[number]), kept(model));
    EXPECT_EQ(learnt(program.accounts[number]), learnt(model));
    Texts rows;
    for (const auto& mail : program.messages.Messages(number, model.AcntMsgCount)) rows.push_back(mail.Subject);
    EXPECT_EQ(rows, model.rows);
    TabStrip::Tab& other = program.frmMain.TabStripAcnts.Tabs(number);
    EXPECT_EQ((Texts{tab(number), tabImage(number), other.Caption, other.Image}),
              (Texts{model.caption(), model.picture(), model.AcntName, model.picture()}));
  }

  void compareTree() {
    Tree expected, found;
    if (counted_) expected["Settings/AcntNum"] = std::to_string(count());
    for (std::size_t i = 1; i <= count(); ++i) expected.merge(kept(accounts_[i], std::to_string(i)));
    for (const auto& value : platform.tree.values)
      if (value.first.starts_with("Settings/Acnt")) found.insert(value);
    EXPECT_EQ(found, expected);
  }

  void comparePage() {
    MainWindow& main = program.frmMain;
    for (const auto& [box, member, texts] : inputs) EXPECT_EQ((main.*box).Text.get(), page_.*member);
    for (const auto& [box, member] : ticks) EXPECT_EQ((main.*box).Value.get(), page_.*member);
    EXPECT_EQ(main.txtAcntColour.BackColour.get(), page_.AcntColour);
    EXPECT_EQ(main.chkAcntSoundOn.Visible.get(), accounts_[onPage_].AcntSoundValid);
    const bool changed = dirty(), some = count() > 0, movable = count() > 1 && !changed;
    EXPECT_THAT((std::vector<bool>{program.unsaved.AcntDirty, main.tbrButtons[saveAccountBar].Enabled,
                                   main.tbrButtons[cancelAccountBar].Enabled, !main.tbrAcnts.Enabled,
                                   !main.tbrMainButtons.Enabled}),
                testing::Each(changed));
    EXPECT_EQ(main.tbrMoveButtons["Backward"].Enabled.get(), movable && current_ != 1);
    EXPECT_EQ(main.tbrMoveButtons["Forward"].Enabled.get(), movable && current_ != count());
    EXPECT_THAT((std::vector<bool>{main.tbrAcnts["AcntDelete"].Enabled, main.tbrAcnts["AcntTest"].Enabled,
                                   main.tbrEmail["EmailNew"].Enabled, main.tbrEmail["EmailCheck"].Enabled,
                                   main.tbrButtons[closeBar].Enabled, main.tbrButtons[checkAllBar].Enabled,
                                   main.lvwEmail.Enabled, main.mnuTrayAutoCheck.Enabled, main.mnuTrayCheckAll.Enabled,
                                   main.mnuTrayOptions.Enabled}),
                testing::Each(some));
    EXPECT_EQ(program.CurrentPage, shownPage_);
    EXPECT_EQ(main.fraNoAcntsBanner.Visible.get(), !some && shownPage_ != optionsPage);
  }

  void compareAll() override {
    ASSERT_EQ(platform.asked.size(), dialogs_.size());
    for (std::size_t i = 0; i < dialogs_.size(); ++i) {
      EXPECT_EQ(platform.asked[i].title, dialogs_[i].first);
      EXPECT_THAT(platform.asked[i].text, testing::HasSubstr(dialogs_[i].second));
    }
    ASSERT_EQ(program.accounts.AcntNum(), static_cast<int>(count()));
    const auto& [email, accounts] = std::tie(program.frmMain.TabStripEmail, program.frmMain.TabStripAcnts);
    const auto orOne = [](std::size_t number) { return std::max<std::size_t>(1, number); };  // a tab stands for none
    EXPECT_THAT((std::vector<int>{program.accounts.AcntCurrent, email.SelectedItem(), accounts.SelectedItem(),
                                  email.Count(), accounts.Count()}),
                testing::ElementsAre(current_, orOne(current_), orOne(onPage_), orOne(count()), orOne(count())));
    Texts rows;
    for (const auto& row : program.frmMain.lvwEmail.Rows()) rows.push_back(row.Cells[2]);
    EXPECT_EQ(rows, current().rows) << "what a click on a row would mean";
    const std::string none = "No Accounts have been created...";
    EXPECT_EQ(panel(1) + "|" + panel(3),
              count() == 0 ? none + "|" : current().AcntStatusText + "|" + current().AcntLastCheckText);
    for (std::int16_t number = 1; number <= program.accounts.AcntNum(); ++number) compareAccount(number);
    compareTree();
    comparePage();
  }

  void forgetStep() override {
    dialogs_.clear();
    platform.asked.clear();
    platform.answers.clear();
  }

  void run(int steps) {
    using Self = AccountModel;
    take<Self>(steps, {{5, &Self::add},
                       {12, &Self::type},
                       {7, &Self::save},
                       {2, &Self::cancel},
                       {2, &Self::remove},
                       {1, &Self::removeAll},
                       {3, &Self::move},
                       {8, &Self::press},
                       {6, &Self::check}});
  }

  int delivered_ = 0;
  std::vector<Model> accounts_{1};  ///< by number; the first stands for none
  std::size_t current_ = 0;
  std::size_t onPage_ = 0;  ///< the Accounts page's; the Email page may have gone on to another
  std::int16_t shownPage_ = emailPage;
  Account page_;  ///< the Accounts page
  bool counted_ = false;
  std::vector<std::pair<std::string, std::string>> dialogs_;  ///< titles, and what their texts hold
};

TEST_P(AccountModel, IsFollowedAtEveryStep) { run(300); }

INSTANTIATE_TEST_SUITE_P(Seeds, AccountModel, testing::Range(1U, 13U));

}  // namespace
}  // namespace velmora
