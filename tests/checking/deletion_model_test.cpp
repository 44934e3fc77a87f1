#include <gmock/gmock.h>

#include <algorithm>

#include "rules/rule_report.h"
#include "support/random_steps.h"

namespace velmora {
namespace {

using test::MemoryServer;
using Texts = std::vector<std::string>;

struct Mail {
  std::string uid, subject, body;

  std::string header() const { return "From: a@example.org\r\nSubject: " + subject + "\r\nX-Id: " + uid + "\r\n"; }
};

/// Two rules, a letter in the subject each. The one that deletes is the first.
struct Letters {
  char deletion = 'D', spam = 'S';

  bool isDelete(const std::string& subject) const { return subject.find(deletion) != std::string::npos; }
  bool isSpam(const std::string& subject) const {
    return !isDelete(subject) && subject.find(spam) != std::string::npos;
  }
};

/// An account as a plain reader of the help would keep it, and its mailbox.
struct Model {
  explicit Model(std::string itsName) : name(std::move(itsName)) {}

  std::string name, status;
  bool enabled = true, hasUidl = true;
  bool connected = false, hasMessages = false, hasNew = false, checked = false;
  std::size_t count = 0, previousCount = 0, newCount = 0, spamCount = 0, deleteCount = 0;
  std::vector<MailMessage> cells;  ///< those beyond `count` keep what they held
  std::vector<Mail> mailbox;

  std::string idOf(const Mail& mail) const {
    return hasUidl ? mail.uid : "header " + std::to_string(std::hash<std::string>()(mail.header()));
  }
  std::set<std::size_t> flagged(bool MailMessage::*flag) const {
    std::set<std::size_t> result;
    for (std::size_t i = 0; i < count; ++i)
      if (cells[i].*flag) result.insert(i);
    return result;
  }
  void countMarks() {
    spamCount = flagged(&MailMessage::Spam).size();
    deleteCount = flagged(&MailMessage::Delete).size();
  }

  std::string tab() const { return count == 0 ? name : name + "  (" + std::to_string(count) + ")"; }
  std::string picture() const {
    const std::string state = checked && !connected ? "MailError" : count == 0 ? "MailNo" : "MailYes";
    return enabled ? state : state + "Disabled";
  }
  void tell(const std::string& noun) {
    status = name + " - " + (count == 0 ? "No Messages" : std::to_string(count) + " " + noun);
  }

  void sort(bool descending) {
    for (std::size_t i = 0; i < count; ++i)
      for (std::size_t j = i + 1; j < count; ++j) {
        const int order = cells[j].Subject.compare(cells[i].Subject);
        if (descending ? order > 0 : order < 0) std::swap(cells[i], cells[j]);
      }
  }

  void fail() {
    count = newCount = spamCount = deleteCount = 0;
    hasMessages = connected = hasNew = false;
    status = name + " - Error Accessing Account";
  }

  void capture(bool fetched, const Letters& rules) {
    if (fetched) count = mailbox.size();
    cells.resize(std::max(cells.size(), count));
    for (std::size_t i = 0; i < count && fetched; ++i) {
      cells[i].Subject = mailbox[i].subject;
      cells[i].Body = mailbox[i].body;
      cells[i].MsgID = idOf(mailbox[i]);
    }
    for (std::size_t i = 0; i < count; ++i) {
      cells[i].New = true;
      for (std::size_t j = 0; j < count; ++j) cells[i].New &= cells[j].PrevMsgID != cells[i].MsgID;
      cells[i].Spam = rules.isSpam(cells[i].Subject);
      cells[i].Delete = rules.isDelete(cells[i].Subject);
    }
    for (std::size_t i = 0; i < count; ++i) cells[i].PrevMsgID = cells[i].MsgID;
    countMarks();
    connected = true;
    hasMessages = count > 0;
    hasNew = count > previousCount;
    newCount = hasNew ? count - previousCount : 0;
    previousCount = std::max(count, previousCount);
    tell(count == 1 ? "Message" : "Messages");
  }

  void remove(const std::set<std::size_t>& chosen) {
    std::vector<MailMessage> kept;
    for (std::size_t i = 0; i < count; ++i)
      if (!chosen.contains(i)) kept.push_back(cells[i]);
    for (std::size_t i = 0; i < count; ++i) cells[i] = i < kept.size() ? kept[i] : MailMessage();
    count = previousCount = kept.size();
    newCount = flagged(&MailMessage::New).size();
    countMarks();
    tell("Message(s)");
  }
};

std::string described(const MailMessage& mail) {
  return mail.Subject + " " + mail.Body + mail.MsgID + " before: " + mail.PrevMsgID + (mail.New ? " new" : "") +
         (mail.Spam ? " spam" : "") + (mail.Delete ? " delete" : "");
}

/// Does the same to the program and then to models of its accounts. Whether a connection failed is what the program
/// tells; what becomes of messages and mailboxes then is for the models to say.
class DeletionModel : public test::RandomSteps {
 protected:
  void SetUp() override {
    for (const auto* name : {"", "Work", "Home", "Club"}) models_.emplace_back(name);
    models_[2].hasUidl = models_[3].enabled = false;
    for (std::size_t i = 1; i < models_.size(); ++i) addAccount(models_[i].name, models_[i].enabled);
    platform.servers["Home"].answers["UIDL"] = "-ERR what?\r\n";
    platform.servers["Club"].pipelining = true;
    for (const auto* name : {"SuppressConnectErrors", "SuppressRetrieveErrors"}) option(name, "0");
    for (const auto& [name, value] : {std::pair{"SortColumn", "3"}, {"SortOrder", "0"}}) option(name, value);
    start();
    for (std::size_t i = 1; i < models_.size(); ++i) {
      models_[i].status = program.accounts[static_cast<std::int16_t>(i)].AcntStatusText;
      server(models_[i]).line.onReceive = [this] { program.frmMain.tmrRetrieveMessage.tick(); };
    }
  }

  MemoryServer& server(const Model& model) { return platform.servers[model.name]; }
  Model& shown() { return models_[current_]; }
  Model& any() { return models_[1 + random(models_.size() - 1)]; }

  /// Whether the program's next dialog has this title and speaks of the account.
  bool isTold(const Model& model, const std::string& title) {
    if (told_ == platform.asked.size()) return false;
    const Question& next = platform.asked[told_];
    const bool told = next.title == "Velmora - " + title && next.text.find(model.name) != std::string::npos;
    told_ += told ? 1 : 0;
    return told;
  }

  /// Now and then the account's next connection breaks at any byte, or the server refuses something.
  void befall() {
    Model& model = oneIn(3) ? any() : shown();
    test::MemoryLine& line = server(model).line;
    const bool breaks = oneIn(3), refuses = oneIn(3);
    isTroubled_ = breaks || refuses;
    if (breaks) (oneIn(2) ? line.dropAfter : line.silentAfter) = random(oneIn(2) ? 300 : 1200);
    line.faultyConnections = line.connections + 1;
    const Texts noes = {"-ERR [IN-USE] locked\r\n", "?\r\n", MemoryServer::hangUp};
    const auto* command = std::array{"PASS", "DELE 1", "DELE 2", "DELE 3", "QUIT", "QUIT"}[random(6)];
    if (refuses) server(model).answers[command] = noes[random(noes.size())];
    if (refuses && oneIn(3)) server(model).answers["RSET"] = noes[random(noes.size())];
    const Answer answer = std::array{Answer::No, Answer::Ok, Answer::Yes, Answer::Yes, Answer::Yes}[random(5)];
    platform.answers.assign(2 * models_.size(), answer);
  }

  void modelCheck(Model& model) {
    model.checked = true;
    if (isTold(model, "Error Establishing Connection") || isTold(model, "Error Processing Messages"))
      return model.fail();
    model.capture(program.options.QuickCheck != 1 || model.mailbox.size() != model.count, rules_);
    if (sorts_) model.sort(descending_);
  }

  /// All that was chosen goes, on the server and in the store, or nothing does.
  void modelDelete(Model& model, const std::set<std::size_t>& chosen, const std::string& word, bool asks = true) {
    if (asks && program.options.DeleteConfirmation == 1) {
      EXPECT_TRUE(isTold(model, "Ready to Delete" + word + " Message(s)"));
      if (platform.answers.front() != Answer::Yes) return;
    }
    std::set<std::string> ids;
    for (const std::size_t i : chosen) ids.insert(model.cells[i].MsgID);
    std::vector<Mail> kept;
    for (const Mail& mail : model.mailbox)
      if (!ids.contains(model.idOf(mail))) kept.push_back(mail);
    const bool failed = isTold(model, "Delete Connection Failure");
    EXPECT_TRUE(isTroubled_ || !failed);
    if (!failed) model.remove(chosen);
    // A server may have heard QUIT and yet break before it says so.
    if (!failed || server(model).messages.size() == kept.size()) model.mailbox = kept;
  }

  /// By and large mail comes in, anywhere in the mailbox, but another program takes some off again.
  void deliver() {
    Model& model = any();
    const auto place = model.mailbox.begin() + static_cast<long>(random(model.mailbox.size() + 1));
    if (model.mailbox.size() > 7 || oneIn(6)) {
      if (place != model.mailbox.end()) model.mailbox.erase(place);
    } else {
      const std::string number = std::to_string(++delivered_);
      const Mail fresh{"u" + number, std::string(1, "ADSX"[random(4)]), ""};
      const Mail like = oneIn(5) && place != model.mailbox.end() ? *place : fresh;
      model.mailbox.insert(place, {like.uid, like.subject, "Text of " + number + "\r\n"});
    }
    server(model).messages.clear();
    for (const Mail& mail : model.mailbox)
      server(model).messages.push_back({mail.uid, mail.header() + "\r\n" + mail.body});
  }

  void checkSome(bool all) {
    all ? checkAll() : check();
    for (std::size_t i = 1; i < models_.size(); ++i)
      if (all ? models_[i].enabled : i == current_) modelCheck(models_[i]);
  }
  void checkOne() { checkSome(false); }
  void checkEach() { checkSome(true); }

  /// Clicks rows of a list that has some; the last of them is at `last`.
  std::set<std::size_t> select(std::size_t& last) {
    std::set<std::size_t> chosen = {last = random(shown().count)};
    for (std::size_t i = 0; i < shown().count; ++i)
      if (oneIn(4)) chosen.insert(i);
    std::vector<std::int32_t> rows;
    for (const std::size_t i : chosen) rows.push_back(static_cast<std::int32_t>(i + 1));
    ListView& list = program.frmMain.lvwEmail;
    list.UserSelected(rows, static_cast<std::int32_t>(last + 1));
    list.ItemClick();
    list.Click();
    return chosen;
  }

  void deleteSelected() {
    std::size_t last = 0;
    const auto chosen = shown().count > 0 ? select(last) : std::set<std::size_t>();
    program.frmMain.tbrEmail["EmailDelete"].click();
    if (!chosen.empty()) modelDelete(shown(), chosen, "");
  }

  void deleteInPreview() {
    if (shown().count == 0) return;
    std::size_t last = 0;
    select(last);
    program.frmMain.tbrEmail["EmailPreview"].click();
    if (oneIn(2)) select(last);
    program.frmPreview.tbrButtons["Delete"].click();
    modelDelete(shown(), {last}, "");
  }

  void deleteSpam() {
    const bool offered = !shown().flagged(&MailMessage::Spam).empty();
    program.frmMain.tbrEmail["EmailSpam"].click();
    for (Model& model : models_)
      if (offered && model.spamCount > 0) modelDelete(model, model.flagged(&MailMessage::Spam), " Spam");
  }

  /// The Rule Report's, for which all is done with, whatever came of it.
  void deleteNow() {
    ShowRuleReport(program);
    if (!program.frmRuleReport.RuleReportOpen) return;
    const bool spam = oneIn(2);
    program.frmRuleReport.TabStripRuleReport.SelectTab(spam ? 2 : 1);
    // What the user has selected meanwhile is none of the report's business.
    if (shown().count > 0) program.frmMain.lvwEmail.UserSelected({1}, 1);
    program.frmRuleReport.tbrRuleReport["DeleteNow"].click();
    for (Model& model : models_) {
      std::size_t& marks = spam ? model.spamCount : model.deleteCount;
      if (marks == 0) continue;
      modelDelete(model, model.flagged(spam ? &MailMessage::Spam : &MailMessage::Delete), "", false);
      marks = 0;
    }
  }

  void choose() {
    program.options.QuickCheck = oneIn(2) ? 1 : 0;
    program.options.DeleteConfirmation = oneIn(2) ? 1 : 0;
    program.options.MessageSort = (sorts_ = oneIn(2)) ? 1 : 0;
    rules_ = {"DS"[random(2)], "SX"[random(2)]};
    program.rules.ResizeRules(2);
    program.rules.live.RuleCount = 2;
    program.rules.live.Show = 1;
    for (const auto& [number, letter, action] :
         {std::tuple{1, rules_.deletion, Rule::deleteFromServer}, {2, rules_.spam, Rule::markAsSpam}}) {
      Rule& rule = program.rules.live[static_cast<std::int16_t>(number)];
      rule.DescCount = 1;
      rule.Description[1] = std::string("Subject Contains ") + letter + " ";
      rule.Action = action;
    }
  }

  void clickHeader() {
    if (shown().count > 0 && sorts_) shown().sort(descending_ = !descending_);
    program.frmMain.lvwEmail.ColumnClick("Subject");
  }

  void showOther() {
    current_ = 1 + random(models_.size() - 1);
    program.frmMain.TabStripEmail.SelectTab(static_cast<int>(current_));
  }

  void compareAccount(std::int16_t number) {
    const Model& model = models_[static_cast<std::size_t>(number)];
    const Accounts::Row& row = program.accounts[number];
    SCOPED_TRACE(model.name);
    EXPECT_THAT((std::vector<int>{row.AcntMsgCount, row.AcntPrevCount, row.AcntNewCount, row.AcntSpamCount,
                                  row.AcntDeleteCount, row.AcntConnected, row.AcntHasNew, row.AcntHasMessages}),
                testing::ElementsAre(model.count, model.previousCount, model.newCount, model.spamCount,
                                     model.deleteCount, model.connected, model.hasNew, model.hasMessages));
    EXPECT_EQ((Texts{row.AcntStatusText, tab(number), tabImage(number)}),
              (Texts{model.status, model.tab(), model.picture()}));
    Texts held, hold, inMailbox, leftThere;
    for (std::size_t i = 0; i < model.cells.size(); ++i) {
      held.push_back(described(program.messages.at(number, static_cast<std::int16_t>(i + 1))));
      hold.push_back(described(model.cells[i]));
    }
    EXPECT_EQ(held, hold);
    for (const auto& mail : server(model).messages) inMailbox.push_back(mail.uid + " " + mail.text);
    for (const auto& mail : model.mailbox) leftThere.push_back(mail.uid + " " + mail.header() + "\r\n" + mail.body);
    EXPECT_EQ(inMailbox, leftThere);
  }

  void compareAll() override {
    EXPECT_EQ(told_, platform.asked.size());
    EXPECT_EQ(program.accounts.AcntCurrent, current_);
    EXPECT_EQ(program.frmMain.TabStripEmail.SelectedItem(), static_cast<int>(current_));
    EXPECT_EQ(panel(1), shown().status);
    EXPECT_TRUE(program.frmMain.fraEmailToolBar.Enabled && !program.frmPreview.PreviewOpen);
    Texts rows, expected;
    for (const auto& row : program.frmMain.lvwEmail.Rows())
      rows.push_back(row.Cells[2] + " " + row.Picture + (row.Bold ? " bold" : ""));
    for (std::size_t i = 0; i < shown().count; ++i) {
      const MailMessage& cell = shown().cells[i];
      const std::string unmarked = cell.New ? "New" : "Normal";
      const std::string spam = cell.New ? "SpamNew" : "Spam";
      const std::string picture = cell.Delete ? "Delete" : cell.Spam ? spam : unmarked;
      expected.push_back(cell.Subject + " " + picture + (cell.New ? " bold" : ""));
    }
    EXPECT_EQ(rows, expected);
    for (std::int16_t number = 1; number <= program.accounts.AcntNum(); ++number) compareAccount(number);
  }

  void forgetStep() override {
    frmRuleReport_Unload(program);
    told_ = 0;
    platform.asked.clear();
    for (auto& [name, each] : platform.servers) {
      each.line.dropAfter = each.line.silentAfter = std::nullopt;
      std::erase_if(each.answers, [](const auto& answer) { return answer.first != "UIDL"; });
    }
    befall();
  }

  void run(int steps) {
    using Self = DeletionModel;
    const Lots<Self> lots = {{12, &Self::deliver},       {4, &Self::checkOne},        {3, &Self::checkEach},
                             {4, &Self::deleteSelected}, {2, &Self::deleteInPreview}, {2, &Self::deleteSpam},
                             {2, &Self::deleteNow},      {1, &Self::choose},          {1, &Self::clickHeader},
                             {2, &Self::showOther}};
    choose();
    befall();
    take(steps, lots);
  }

  std::vector<Model> models_;  ///< by account number
  std::size_t current_ = 1;
  Letters rules_;
  bool sorts_ = true, descending_ = false;
  std::size_t told_ = 0;  ///< of the dialogs of a step
  int delivered_ = 0;
  bool isTroubled_ = false;
};

TEST_P(DeletionModel, IsFollowedAtEveryStep) { run(250); }

INSTANTIATE_TEST_SUITE_P(Seeds, DeletionModel, testing::Range(1U, 13U));

}  // namespace
}  // namespace velmora
