#include <gmock/gmock.h>

#include "accounts/plain_accounts.h"
#include "app/shut_down.h"
#include "rules/save_rules.h"

namespace velmora {
namespace {

using namespace test;

/// Does the same to the program and to a model of its accounts, each step first to the model.
class AccountModel : public PlainAccounts {
 protected:
  void SetUp() override {
    for (const auto* host : {"Alpha", "Beta", "Gamma"})
      platform.servers[host].line.onReceive = [this] { program.frmMain.tmrRetrieveMessage.tick(); };
    platform.files = {paths.begin(), paths.end() - 1};
    for (const auto& [name, value] : {std::pair{"SortColumn", "3"},
                                      {"SortOrder", "0"},
                                      {"UseInterval", "1"},
                                      {"EmailCheckStartUp", "1"},
                                      {"QuickCheck", "0"}})
      option(name, value);
    showEmail_ = GetParam() / 3 % 3;
    option("ShowEmail", std::to_string(showEmail_));
    option("DefaultClient", defaultClient);
    option("DefaultSound", defaultSound);
    set("Settings/FirstUse", "1");
    for (const auto* name : {"Alpha", "Beta", "Gamma"})
      if (GetParam() % 3 != 0) keepAccount(name);
    accounts_[0].AcntEnabled = 0;
    accounts_[0].AcntName = accounts_[0].AcntPort = "";
    begin();
  }

  void goTo(std::int16_t page) {
    if (!dirty()) shownPage_ = page;
    if (!dirty() && page == emailPage && count() > 0) selectEmailTab(current_);
    if (!dirty() && page == accountsPage && count() > 0) show(current_);
    program.frmMain.tbrMainButtons[PageBanners[static_cast<std::size_t>(page)]].click();
  }
  /// Whether the page shows now.
  bool reach(std::int16_t page) {
    if (shownPage_ != page) goTo(page);
    return shownPage_ == page;
  }
  void switchPage() { goTo(static_cast<std::int16_t>(random(pageCount))); }

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
      account.AcntLastCheckTime = now("h:mm:ss AM/PM");
      panels_ = {account.AcntStatusText, account.AcntLastCheckText};
      show(count());
      counted_ = true;
    }
    program.frmMain.tbrAcnts["AcntAdd"].click();
  }

  void typeInto(const Input& input, const std::string& text) {
    const bool client = input.member == &Account::AcntClient, sound = input.member == &Account::AcntSound;
    if ((client && (hidesClient_ || hasClient_)) || (sound && (hidesSound_ || hasSound_))) return;
    if (std::exchange(page_.*input.member, text) != text) followFiles(page_, client, sound);
    if (sound) seesTick_ = current().AcntSoundValid;
    (program.frmMain.*input.box).Text = text;
  }
  void tick(std::size_t number) {
    const auto& [box, member] = ticks[number];
    if (member == &Account::AcntSoundOn && !seesTick_) return;
    (program.frmMain.*box).Value = page_.*member = static_cast<std::int16_t>(1 - page_.*member);
  }
  void pickColour(std::size_t box) {
    page_.AcntColour = colours[box];
    page_.AcntColourIndex = static_cast<std::int32_t>(box + 1);
    program.frmMain.lblColourBox[box].Click();
  }
  /// Something else, what was there before, or what a check needs.
  void type() {
    if (!reach(accountsPage) || count() == 0) return;
    if (oneIn(4)) tick(random(ticks.size()));
    if (oneIn(8)) pickColour(random(colours.size()));
    const Input& input = inputs[oneIn(4) ? 4 : random(inputs.size())];
    typeInto(input, oneIn(4) ? current().*input.member : input.texts[random(input.texts.size())]);
    for (std::size_t i = oneIn(3) ? 0 : 4; i < 4; ++i) typeInto(inputs[i], inputs[i].texts[i == 0 ? random(3) : 0]);
  }
  void save() {
    if (dirty()) modelSave();
    program.frmMain.tbrButtons[saveAccountBar]["SaveAccount"].click();
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
      if (answer == Answer::Yes) modelRemove();
    }
    program.frmMain.tbrAcnts["AcntDelete"].click();
  }
  void modelRemove() {
    accounts_.erase(accounts_.begin() + static_cast<long>(current_));
    if (count() > 0) return showAll(std::min(current_, count()));
    startsUp_ = autoCheck_ = countsDown_ = false;
    takeDefaults();
    showNone();
  }
  void removeAll() {
    for (std::size_t left = oneIn(2) ? 2 * count() : 0; left > 0; --left) remove();
  }

  void move() {
    reach(accountsPage);
    const bool back = oneIn(2);
    if (!dirty() && count() > 1 && current_ != (back ? 1 : count())) modelSwap(back ? current_ - 1 : current_ + 1);
    program.frmMain.tbrMoveButtons[back ? "Backward" : "Forward"].click();
  }

  /// Whether the account may be left.
  bool modelAsk() {
    const Answer answer = std::array{Answer::Yes, Answer::No, Answer::Cancel}[random(3)];
    expectDialog("Changes Not Saved!", "'" + current().AcntName + "'", answer);
    if (answer == Answer::Yes) modelSave();
    if (answer == Answer::Cancel) show(current_);
    return answer != Answer::No;
  }
  void modelLeave(std::size_t target) {
    if (target == current_ || !modelAsk()) return;
    show(current_);
    show(target);
  }
  void modelPress(bool onEmail, MouseButton button, std::size_t target) {
    const bool clicks = button == MouseButton::Left;
    if (dirty()) return clicks ? modelLeave(target) : void();
    if (clicks || target != current_) onEmail ? selectEmailTab(target) : show(target);
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

  /// Mail comes in or goes, and servers break and recover.
  void deliver() {
    auto& server = platform.servers[inputs[0].texts[random(3)]];
    if (server.messages.size() > 5 || (!server.messages.empty() && oneIn(5)))
      server.messages.erase(server.messages.begin() + static_cast<long>(random(server.messages.size())));
    else
      server.messages.push_back(test::message("ASDX"[random(4)] + std::to_string(++delivered_)));
    server.answers.clear();
    if (oneIn(5)) server.answers[oneIn(2) ? "PASS" : "RETR"] = "-ERR not now\r\n";
  }

  void checkOne() {
    if (!reach(emailPage) || count() == 0) return;
    countsDown_ = false;
    modelCheck(current());
    modelSounds(current_);
    list(current_);
    check();
  }
  void checkEach() {
    if (count() > 0) modelCheckAll(true);
    shownPage_ == emailPage ? checkAll() : choose(program.frmMain.mnuTrayCheckAll);
  }
  void checkByItself() {
    const bool startUp = oneIn(2);
    if (count() > 0 && (startUp ? countsDown_ : autoCheck_)) modelCheckAll(false);
    program.autoCheck.NextCheckTime = "";
    (startUp ? program.frmMain.tmrMailStartUp : program.frmMain.tmrMailTime).tick();
  }
  void testConnection() {
    reach(accountsPage);
    if (count() > 0 && !dirty()) {
      isReached(current()) ? expectDialog("Velmora - Test Connection Successfull")
                           : expectDialog("Velmora - Test Connection Failure", "Account: " + current().AcntName + " ");
      countsDown_ = false;
      show(current_);
      panels_[1] = accounts_.back().AcntLastCheckText;
    }
    program.frmMain.tbrAcnts["AcntTest"].click();
  }

  static void choose(const MenuEntry& entry) {
    if (entry.Enabled) entry.Click();
  }
  void switchAutoCheck() {
    if (count() > 0) {
      autoCheck_ = !autoCheck_;
      takeDefaults();
      list(current_);
      const std::size_t tab = acntTab_;
      if (!dirty()) show(current_);
      acntTab_ = tab;  // selected when its page is entered
    }
    choose(program.frmMain.mnuTrayAutoCheck);
  }

  void changeFiles() {
    const Texts files = {defaultClient, defaultSound, paths[random(paths.size() - 1)]};
    const std::string& path = files[random(files.size())];
    if (platform.files.erase(path) == 0) platform.files.insert(path);
  }

  void changeRules() {
    stored_.resize(random(4));
    for (std::string& account : stored_)
      account =
          count() > 0 && !oneIn(3) ? accounts_[1 + random(count())].AcntName : names[2 + random(names.size() - 2)];
    live_ = working_ = stored_;
    const auto size = static_cast<std::int16_t>(stored_.size());
    program.rules.ResizeRules(size);
    program.rules.working.RuleCount = size;
    for (std::int16_t i = 0; i < size; ++i) {
      WorkingRule& rule = program.rules.working[static_cast<std::int16_t>(i + 1)];
      rule.Account = stored_[static_cast<std::size_t>(i)];
      rule.Action = i % 2 == 0 ? Rule::markAsSpam : Rule::deleteFromServer;
      rule.DescCount = 1;
      rule.Description[1] = i % 2 == 0 ? "Subject Contains S " : "Subject Contains D ";
    }
    WriteRules(program, platform.programFile("Rules.ini"));
    if (size > 0) program.rules.working[1].Account = working_[0] = "Work";
  }

  void restart() {
    platform.hasQuit = false;
    if (oneIn(2)) {
      const bool ends = !dirty() || (modelAsk() && !dirty());
      QuitApplication(program);
      EXPECT_EQ(platform.hasQuit, ends);
    }
    std::destroy_at(&program);
    std::construct_at(&program, platform);
    begin();
  }

  void compareAccount(std::int16_t number) {
    const Model& model = accounts_[static_cast<std::size_t>(number)];
    SCOPED_TRACE(model.AcntName);
    EXPECT_EQ(kept(program.accounts[number]), kept(model));
    EXPECT_EQ(learnt(program.accounts[number]), learnt(model));
    Texts rows;
    for (const auto& mail : program.messages.Messages(number, model.AcntMsgCount))
      rows.push_back(mail.Subject + (mail.New ? " new" : ""));
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
    EXPECT_EQ(platform.tree.values["Settings\\Options/UseInterval"], autoCheck_ ? "1" : "0");
    EXPECT_EQ(platform.tree.values["Settings\\Options/EmailCheckStartUp"], startsUp_ ? "1" : "0");
  }

  void comparePage() {
    MainWindow& page = program.frmMain;
    for (const auto& [box, member, texts] : inputs) {
      const bool client = member == &Account::AcntClient, sound = member == &Account::AcntSound;
      const bool hidden = (client && hidesClient_) || (sound && hidesSound_);
      const std::string notice = client ? "Using Default Email Client" : "Using Default Sound File";
      EXPECT_EQ((page.*box).Text.get(), hidden ? notice : page_.*member);
      EXPECT_EQ((page.*box).Enabled.get(), !hidden);
    }
    for (const auto& [box, member] : ticks) EXPECT_EQ((page.*box).Value.get(), page_.*member);
    EXPECT_EQ(page.txtAcntColour.BackColour.get(), page_.AcntColour);
    EXPECT_EQ(page.chkAcntSoundOn.Visible.get(), seesTick_);
    EXPECT_EQ(page.lblAcntPlaySound.Visible.get(), hidesSound_);
  }

  /// What can be done now, by a changed page or without accounts, and which page shows.
  void compareStates() {
    MainWindow& main = program.frmMain;
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
    EXPECT_THAT((std::vector<bool>{main.fraAcnt.Enabled, main.fraAcntToolBar.Enabled, main.fraMainButtons.Enabled,
                                   main.fraEmailToolBar.Enabled, main.TabStripEmail.Enabled, main.TabStripAcnts.Enabled,
                                   main.tbrAcnts["AcntAdd"].Enabled, !program.acnts.AcntBusy,
                                   main.tmrMailTime.Enabled == autoCheck_, main.tmrMailStartUp.Enabled == countsDown_}),
                testing::Each(true));
    for (const Button& button : main.tbrEmail.Buttons) EXPECT_TRUE(some || !button.Enabled) << button.Key;
    EXPECT_EQ(program.CurrentPage, shownPage_);
    for (std::size_t page = 0; page < pageCount; ++page)
      EXPECT_EQ(main.fraMain[page].Visible.get(), static_cast<std::int16_t>(page) == shownPage_);
    EXPECT_EQ(main.fraNoAcntsBanner.Visible.get(), !some && shownPage_ != optionsPage);
  }

  void compareAll() override {
    ASSERT_EQ(platform.asked.size(), dialogs_.size());
    for (std::size_t i = 0; i < dialogs_.size(); ++i) {
      EXPECT_EQ(platform.asked[i].title, dialogs_[i].first);
      EXPECT_THAT(platform.asked[i].text, testing::HasSubstr(dialogs_[i].second));
    }
    EXPECT_EQ(platform.played, heard_);
    ASSERT_EQ(program.accounts.AcntNum(), static_cast<int>(count()));
    const auto& [email, accounts] = std::tie(program.frmMain.TabStripEmail, program.frmMain.TabStripAcnts);
    const auto orOne = [](std::size_t number) { return std::max<std::size_t>(1, number); };  // a tab stands for none
    EXPECT_THAT((std::vector<int>{program.accounts.AcntCurrent, email.SelectedItem(), accounts.SelectedItem(),
                                  email.Count(), accounts.Count()}),
                testing::ElementsAre(current_, orOne(current_), orOne(acntTab_), orOne(count()), orOne(count())));
    Texts rows, live, working;
    for (const auto& row : program.frmMain.lvwEmail.Rows()) rows.push_back(row.Cells[2] + (row.Bold ? " new" : ""));
    for (const auto& rule : program.rules.live.rules()) live.push_back(rule.Account);
    for (const auto& rule : program.rules.working.rules()) working.push_back(rule.Account);
    EXPECT_EQ(rows, count() > 0 ? accounts_[current_].rows : Texts()) << "what a click on a row would mean";
    if (shownPage_ == emailPage) {
      EXPECT_EQ(program.frmMain.lvwEmail.EmptyText.get().empty(), count() == 0);
    }
    EXPECT_EQ(std::tie(live, working), std::tie(live_, working_));
    EXPECT_EQ((Texts{panel(1), panel(3), panel(4)}),
              (Texts{panels_[0], panels_[1], autoCheck_ ? program.autoCheck.NextCheckText : "Auto Check Off"}));
    for (std::int16_t number = 1; number <= program.accounts.AcntNum(); ++number) compareAccount(number);
    compareTree();
    comparePage();
    compareStates();
  }

  void forgetStep() override {
    dialogs_.clear();
    heard_.clear();
    platform.asked.clear();
    platform.answers.clear();
    platform.played.clear();
    platform.clock.minute = static_cast<int>(random(60));
  }

  void run(int steps) {
    using Self = AccountModel;
    const Lots<Self> lots = {{5, &Self::add},           {16, &Self::type},          {7, &Self::save},
                             {2, &Self::cancel},        {2, &Self::remove},         {1, &Self::removeAll},
                             {3, &Self::move},          {8, &Self::press},          {3, &Self::switchPage},
                             {8, &Self::deliver},       {4, &Self::checkOne},       {4, &Self::checkEach},
                             {1, &Self::checkByItself}, {2, &Self::testConnection}, {3, &Self::switchAutoCheck},
                             {4, &Self::changeFiles},   {3, &Self::changeRules},    {1, &Self::restart}};
    take(steps, lots);
  }
};

TEST_P(AccountModel, IsFollowedAtEveryStep) { run(300); }

INSTANTIATE_TEST_SUITE_P(Seeds, AccountModel, testing::Range(1U, 25U));

}  // namespace
}  // namespace velmora
