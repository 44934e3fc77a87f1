#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "checking/failure_texts.h"
#include "messages/message_list.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using test::MemoryServer;

struct Mail {
  std::string uid, subject, body;

  std::string header() const { return "From: a@example.org\r\nSubject: " + subject + "\r\nX-Id: " + uid + "\r\n"; }
  bool operator==(const Mail&) const = default;
};

struct Cell {
  Mail mail;
  std::string id, previousId;
  bool isNew = false, isDelete = false, isSpam = false;
};

/// A rule is a letter in the subject.
struct Rules {
  char spam = 'S', deletion = 'D';
};

/// What came of a connection.
struct Outcome {
  bool connected = true, worked = true, left = true, quitHeard = true;
};

using Commands = std::vector<std::string>;

/// How much the server will have said after its greeting and after each of the commands.
std::vector<std::size_t> bytesSaid(MemoryServer server, const Commands& commands) {
  std::vector<std::size_t> said = {server.opened().size()};
  for (const auto& command : commands) said.push_back(said.back() + server.heard(command + "\r\n").size());
  return said;
}

/// An account as a plain reader of the manual would keep it, and its mailbox.
struct Model {
  explicit Model(std::string itsName) : name(std::move(itsName)) {}

  std::string name;
  bool enabled = true, hasUidl = true, pipelines = false, standsCapa = true;
  std::vector<Mail> mailbox;
  std::vector<Cell> cells;
  std::size_t count = 0, previousCount = 0, newCount = 0, spamCount = 0, deleteCount = 0;
  bool connected = false, hasMessages = false, hasNew = false, checked = false;
  std::string status;

  std::string idOf(const Mail& mail) const {
    return hasUidl ? mail.uid : "header " + std::to_string(std::hash<std::string>()(mail.header()));
  }
  std::string tab() const { return count == 0 ? name : name + "  (" + std::to_string(count) + ")"; }
  std::string picture() const {
    const std::string state = checked && !connected ? "MailError" : count == 0 ? "MailNo" : "MailYes";
    return enabled ? state : state + "Disabled";
  }

  void countMarks(std::size_t& news) {
    spamCount = deleteCount = news = 0;
    for (std::size_t i = 0; i < count; ++i) {
      news += cells[i].isNew ? 1 : 0;
      spamCount += cells[i].isSpam ? 1 : 0;
      deleteCount += cells[i].isDelete ? 1 : 0;
    }
  }

  void fail() {
    count = newCount = spamCount = deleteCount = 0;
    hasMessages = connected = false;
    status = name + " - Error Accessing Account";
  }

  void sort(bool descending) {
    for (std::size_t i = 0; i < count; ++i)
      for (std::size_t j = i + 1; j < count; ++j) {
        const int order = cells[j].mail.subject.compare(cells[i].mail.subject);
        if (descending ? order > 0 : order < 0) std::swap(cells[i], cells[j]);
      }
  }

  void capture(bool fetched, const Rules& rules) {
    if (fetched) count = mailbox.size();
    cells.resize(std::max(cells.size(), count));
    for (std::size_t i = 0; i < count && fetched; ++i) {
      cells[i].mail = mailbox[i];
      cells[i].id = idOf(mailbox[i]);
    }
    for (std::size_t i = 0; i < count; ++i) {
      cells[i].isNew = true;
      for (std::size_t j = 0; j < count; ++j) cells[i].isNew &= cells[j].previousId != cells[i].id;
      cells[i].isSpam = cells[i].mail.subject.find(rules.spam) != std::string::npos;
      cells[i].isDelete = cells[i].mail.subject.find(rules.deletion) != std::string::npos;
    }
    for (std::size_t i = 0; i < count; ++i) cells[i].previousId = cells[i].id;
    std::size_t ignored = 0;
    countMarks(ignored);
    hasMessages = count > 0;
    hasNew = count > previousCount;
    newCount = hasNew ? count - previousCount : 0;
    previousCount = std::max(count, previousCount);
    connected = true;
    const char* noun = count == 1 ? " Message" : " Messages";
    status = name + " - " + (count == 0 ? "No Messages" : std::to_string(count) + noun);
  }

  void remove(const std::set<std::size_t>& chosen) {
    std::vector<Cell> kept;
    for (std::size_t i = 0; i < count; ++i)
      if (!chosen.contains(i)) kept.push_back(cells[i]);
    for (std::size_t i = 0; i < count; ++i) cells[i] = i < kept.size() ? kept[i] : Cell();
    count = previousCount = kept.size();
    countMarks(newCount);
    status = name + " - " + (count == 0 ? "No Messages" : std::to_string(count) + " Message(s)");
  }
};

class DeletionModel : public test::RunningProgram, public testing::WithParamInterface<unsigned> {
 protected:
  void SetUp() override {
    for (const auto* name : {"", "Work", "Home", "Club"}) accounts_.emplace_back(name);
    accounts_[2].hasUidl = false;
    accounts_[3].pipelines = true;
    accounts_[3].enabled = false;
    for (std::size_t i = 1; i < accounts_.size(); ++i) addAccount(accounts_[i].name, accounts_[i].enabled);
    platform.servers["Home"].answers["UIDL"] = "-ERR what?\r\n";
    platform.servers["Club"].pipelining = true;
    for (const auto* name : {"SuppressConnectErrors", "SuppressRetrieveErrors"}) option(name, "0");
    option("SortColumn", "3");
    start();
    for (std::size_t i = 1; i < accounts_.size(); ++i) {
      accounts_[i].status = program.accounts[static_cast<std::int16_t>(i)].AcntStatusText;
      platform.servers[accounts_[i].name].line.onReceive = [this] { program.frmMain.tmrRetrieveMessage.tick(); };
    }
  }

  std::size_t random(std::size_t bound) { return random_() % bound; }
  bool oneIn(std::size_t bound) { return random(bound) == 0; }
  MemoryServer& server(const Model& account) { return platform.servers[account.name]; }
  Model& shown() { return accounts_[current_]; }
  Model& anyAccount() { return accounts_[1 + random(accounts_.size() - 1)]; }

  void expectDialog(const std::string& title, Answer answer = Answer::Ok) {
    dialogs_.push_back("Velmora - " + title);
    platform.answers.push_back(answer);
  }

  /// Picks a fault and has it strike the account's next connection, which runs these commands once it is logged in.
  Outcome befall(Model& account, const Commands& job, const Commands& leaving) {
    if (!oneIn(3)) return {};
    Commands commands = {"USER user", "PASS secret", "STAT"};
    if (account.standsCapa) commands = {"CAPA", "USER user", "PASS secret", "CAPA", "STAT"};
    const std::size_t loggedIn = commands.size();
    const std::size_t worked = loggedIn + job.size();
    for (const auto* more : {&job, &leaving}) commands.insert(commands.end(), more->begin(), more->end());
    const auto said = bytesSaid(server(account), commands);
    const std::size_t at = oneIn(3) ? said.back() - std::min(said.back(), random(14)) : random(said.back() + 1);
    test::MemoryLine& line = server(account).line;
    const bool drops = oneIn(2);
    (drops ? line.dropAfter : line.silentAfter) = at;
    line.faultyConnections = line.connections + 1;
    const bool pipelined = account.pipelines && account.standsCapa;
    const auto isLost = [&](std::size_t command) { return said[command - 1] <= at && at < said[command]; };
    if (account.standsCapa && (isLost(1) || isLost(4))) {
      account.standsCapa = false;  // and the second connection, without it, holds
      return {};
    }
    if (at < said[loggedIn]) return {false, false, false, false};
    if (at < said[worked]) {
      if (pipelined) account.pipelines = false;  // it is done once more, command by command
      return {true, pipelined, pipelined, pipelined};
    }
    if (at >= said.back()) return {};
    if (pipelined) account.pipelines = false;
    const std::size_t beforeQuit = said[said.size() - 2];
    return {true, true, false, drops ? at > beforeQuit : at >= beforeQuit};
  }

  void modelCheck(Model& account) {
    account.checked = true;
    const bool fetches = program.options.QuickCheck != 1 || account.mailbox.size() != account.count;
    Commands job;
    if (fetches && !account.mailbox.empty()) job = {"LIST", "UIDL"};
    for (std::size_t i = 1; i <= account.mailbox.size() && fetches; ++i) job.push_back("RETR " + std::to_string(i));
    const Outcome outcome = befall(account, job, {});
    if (outcome.worked) {
      account.capture(fetches, rules_);
      if (sorts_) account.sort(descending_);
      return;
    }
    expectDialog(outcome.connected ? "Error Processing Messages" : "Error Establishing Connection");
    if (outcome.connected) account.hasNew = false;
    account.fail();
  }

  void modelDelete(Model& account, const std::set<std::size_t>& chosen, const std::string& word) {
    if (program.options.DeleteConfirmation == 1) {
      const Answer answer = oneIn(4) ? Answer::No : Answer::Yes;
      expectDialog("Ready to Delete" + word + " Message(s)", answer);
      if (answer == Answer::No) return;
    }
    std::set<std::string> ids;
    for (const std::size_t i : chosen) ids.insert(account.cells[i].id);
    std::vector<Mail> left;
    Commands job;
    Commands leaving;
    if (!account.mailbox.empty()) job = {"LIST", "UIDL"};
    for (std::size_t i = 0; i < account.mailbox.size(); ++i) {
      if (!account.hasUidl) job.push_back("TOP " + std::to_string(i + 1) + " 0");
      if (ids.contains(account.idOf(account.mailbox[i])))
        leaving.push_back("DELE " + std::to_string(i + 1));
      else
        left.push_back(account.mailbox[i]);
    }
    if (!leaving.empty() && oneIn(8)) {
      server(account).answers[leaving[random(leaving.size())]] = "-ERR locked\r\n";
      expectDialog("Delete Connection Failure");
      return;
    }
    if (!leaving.empty()) leaving.emplace_back("QUIT");
    const Outcome outcome = befall(account, job, leaving);
    if (outcome.quitHeard) account.mailbox = left;
    if (outcome.left)
      account.remove(chosen);
    else
      expectDialog("Delete Connection Failure");
  }

  /// What the rules do to an account that has just been checked.
  void mark(std::int16_t account) {
    Accounts::Row& row = program.accounts[account];
    row.AcntSpamCount = row.AcntDeleteCount = 0;
    for (MailMessage& message : MessagesOf(program, account)) {
      message.Spam = message.Subject.find(rules_.spam) != std::string::npos;
      message.Delete = message.Subject.find(rules_.deletion) != std::string::npos;
      if (message.Spam) ++row.AcntSpamCount;
      if (message.Delete) ++row.AcntDeleteCount;
    }
    if (account == program.accounts.AcntCurrent) ShowAccountMessages(program, account);
  }

  void carryMail(const Model& account) {
    server(account).messages.clear();
    for (const Mail& mail : account.mailbox)
      server(account).messages.push_back({mail.uid, mail.header() + "\r\n" + mail.body});
  }

  void deliver() {
    Model& account = anyAccount();
    if (account.mailbox.size() > 7) return;
    const std::string subject(1, "ADSX"[random(4)]);
    const std::string number = std::to_string(++delivered_);
    Mail mail{"u" + number, subject, "Text of " + number + "\r\n"};
    if (!account.mailbox.empty() && oneIn(5)) {
      const Mail& twin = account.mailbox[random(account.mailbox.size())];
      mail = {twin.uid, twin.subject, mail.body};
    }
    account.mailbox.insert(account.mailbox.begin() + static_cast<long>(random(account.mailbox.size() + 1)), mail);
    carryMail(account);
  }

  void deleteByOther() {
    Model& account = anyAccount();
    if (account.mailbox.empty()) return;
    account.mailbox.erase(account.mailbox.begin() + static_cast<long>(random(account.mailbox.size())));
    carryMail(account);
  }

  void checkOne() {
    modelCheck(shown());
    check();
    mark(static_cast<std::int16_t>(current_));
  }

  void checkEach() {
    for (std::size_t i = 1; i < accounts_.size(); ++i)
      if (accounts_[i].enabled) modelCheck(accounts_[i]);
    checkAll();
    for (std::size_t i = 1; i < accounts_.size(); ++i)
      if (accounts_[i].enabled) mark(static_cast<std::int16_t>(i));
  }

  /// Clicks some rows, the last of them at `current`.
  std::set<std::size_t> select(std::size_t& current) {
    std::set<std::size_t> chosen;
    std::set<std::int32_t> rows;
    for (std::size_t i = 0; i < shown().count; ++i)
      if (oneIn(3)) chosen.insert(i);
    if (shown().count > 0) chosen.insert(current = random(shown().count));
    for (const std::size_t i : chosen) rows.insert(static_cast<std::int32_t>(i + 1));
    ListView& list = program.frmMain.lvwEmail;
    list.UserSelected(rows, chosen.empty() ? 0 : static_cast<std::int32_t>(current + 1));
    if (!chosen.empty()) list.ItemClick();
    list.Click();
    return chosen;
  }

  void deleteSelected() {
    std::size_t current = 0;
    const auto chosen = select(current);
    if (!chosen.empty()) modelDelete(shown(), chosen, "");
    program.frmMain.tbrEmail["EmailDelete"].click();
  }

  void deleteInPreview() {
    if (shown().count == 0) return;
    std::size_t current = 0;
    select(current);
    program.frmMain.tbrEmail["EmailPreview"].click();
    if (oneIn(2)) select(current);
    modelDelete(shown(), {current}, "");
    program.frmPreview.tbrButtons["Delete"].click();
  }

  void deleteSpam() {
    bool offered = false;
    for (std::size_t i = 0; i < shown().count; ++i) offered |= shown().cells[i].isSpam && !shown().cells[i].isDelete;
    for (std::size_t n = 1; n < accounts_.size() && offered; ++n) {
      Model& account = accounts_[n];
      std::set<std::size_t> chosen;
      for (std::size_t i = 0; i < account.count; ++i)
        if (account.cells[i].isSpam) chosen.insert(i);
      if (!chosen.empty()) modelDelete(account, chosen, " Spam");
    }
    program.frmMain.tbrEmail["EmailSpam"].click();
  }

  void choose() {
    program.options.QuickCheck = oneIn(2) ? 1 : 0;
    program.options.DeleteConfirmation = oneIn(2) ? 1 : 0;
    program.options.MessageSort = (sorts_ = oneIn(2)) ? 1 : 0;
    rules_ = {"SX"[random(2)], "DS"[random(2)]};
  }

  void clickHeader() {
    if (shown().count > 0 && sorts_) {
      descending_ = !descending_;
      shown().sort(descending_);
    }
    program.frmMain.lvwEmail.ColumnClick("Subject");
  }

  void showOther() {
    current_ = 1 + random(accounts_.size() - 1);
    program.frmMain.TabStripEmail.SelectTab(static_cast<int>(current_));
  }

  void compareAccount(std::int16_t number) {
    const Model& model = accounts_[static_cast<std::size_t>(number)];
    const Accounts::Row& row = program.accounts[number];
    SCOPED_TRACE(model.name);
    const std::vector<int> counts = {row.AcntMsgCount,  row.AcntPrevCount,   row.AcntNewCount,
                                     row.AcntSpamCount, row.AcntDeleteCount, row.AcntConnected,
                                     row.AcntHasNew,    row.AcntHasMessages, row.AcntChecked};
    EXPECT_THAT(counts, testing::ElementsAre(model.count, model.previousCount, model.newCount, model.spamCount,
                                             model.deleteCount, model.connected, model.hasNew, model.hasMessages,
                                             model.checked));
    EXPECT_EQ(row.AcntStatusText, model.status);
    EXPECT_EQ(tab(number), model.tab());
    EXPECT_EQ(tabImage(number), model.picture());
    for (std::size_t i = 0; i < model.cells.size(); ++i) {
      SCOPED_TRACE("message " + std::to_string(i + 1));
      const MailMessage& mail = program.messages.at(number, static_cast<std::int16_t>(i + 1));
      const Cell& cell = model.cells[i];
      EXPECT_EQ(mail.Subject + " " + mail.Body, cell.mail.subject + " " + cell.mail.body);
      EXPECT_EQ(mail.MsgID + " before: " + mail.PrevMsgID, cell.id + " before: " + cell.previousId);
      EXPECT_EQ((std::vector{mail.New, mail.Spam, mail.Delete}), (std::vector{cell.isNew, cell.isSpam, cell.isDelete}));
    }
    std::vector<Mail> onServer;
    for (const auto& each : server(model).messages) {
      const auto found = std::ranges::find_if(model.mailbox, [&](const Mail& mail) {
        return each.uid == mail.uid && each.text == mail.header() + "\r\n" + mail.body;
      });
      onServer.push_back(found == model.mailbox.end() ? Mail{each.uid, "is not to be here", ""} : *found);
    }
    EXPECT_TRUE(onServer == model.mailbox)
        << onServer.size() << " messages on the server, not " << model.mailbox.size();
  }

  void compareAll() {
    EXPECT_EQ(titles(), dialogs_);
    EXPECT_EQ(program.accounts.AcntCurrent, current_);
    EXPECT_EQ(program.frmMain.TabStripEmail.SelectedItem(), static_cast<int>(current_));
    EXPECT_EQ(panel(1), shown().status);
    EXPECT_TRUE(program.frmMain.fraEmailToolBar.Enabled && !program.PreviewOpen);
    std::vector<std::string> rows;
    for (const auto& row : program.frmMain.lvwEmail.Rows())
      rows.push_back(row.Cells[2] + " " + row.Picture + (row.Bold ? " bold" : ""));
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < shown().count; ++i) {
      const Cell& cell = shown().cells[i];
      const std::string unmarked = cell.isNew ? "New" : "Normal";
      const std::string spam = cell.isNew ? "SpamNew" : "Spam";
      const std::string picture = cell.isDelete ? "Delete" : cell.isSpam ? spam : unmarked;
      expected.push_back(cell.mail.subject + " " + picture + (cell.isNew ? " bold" : ""));
    }
    EXPECT_EQ(rows, expected);
    for (std::int16_t number = 1; number <= program.accounts.AcntNum(); ++number) compareAccount(number);
  }

  /// Lets nothing of a step reach the next one.
  void clean() {
    dialogs_.clear();
    platform.asked.clear();
    platform.answers.clear();
    for (auto& [name, each] : platform.servers) {
      each.line.dropAfter.reset();
      each.line.silentAfter.reset();
      std::erase_if(each.answers, [](const auto& answer) { return answer.first.starts_with("DELE"); });
    }
  }

  void follow() {
    const std::vector<std::pair<std::size_t, void (DeletionModel::*)()>> steps = {
        {12, &DeletionModel::deliver},   {2, &DeletionModel::deleteByOther},  {4, &DeletionModel::checkOne},
        {3, &DeletionModel::checkEach},  {3, &DeletionModel::deleteSelected}, {1, &DeletionModel::deleteInPreview},
        {2, &DeletionModel::deleteSpam}, {1, &DeletionModel::choose},         {1, &DeletionModel::clickHeader},
        {2, &DeletionModel::showOther},
    };
    std::vector<std::size_t> lots;
    for (std::size_t i = 0; i < steps.size(); ++i) lots.insert(lots.end(), steps[i].first, i);
    choose();
    for (int number = 1; number <= 250 && !HasFailure(); ++number) {
      const std::size_t step = lots[random(lots.size())];
      SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", move " + std::to_string(number) + ", step " +
                   std::to_string(step));
      (this->*steps[step].second)();
      compareAll();
      clean();
    }
  }

  std::vector<Model> accounts_;
  std::size_t current_ = 1;
  Rules rules_;
  bool sorts_ = true, descending_ = true;
  std::vector<std::string> dialogs_;
  std::mt19937 random_{GetParam()};
  int delivered_ = 0;
};

TEST_P(DeletionModel, IsFollowedAtEveryStep) { follow(); }

INSTANTIATE_TEST_SUITE_P(Seeds, DeletionModel, testing::Range(1U, 13U));

}  // namespace
}  // namespace velmora
