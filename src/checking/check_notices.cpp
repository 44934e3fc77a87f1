#include "checking/check_notices.h"

#include <algorithm>
#include <string>
#include <utility>

#include "app/pages.h"
#include "app/program.h"
#include "app/tray.h"
#include "messages/email_page.h"

namespace velmora {

namespace {

/// The account may have been moved, renamed or deleted since, 0 for that.
std::int16_t accountOf(const Program& program, const std::string& name) {
  for (const std::int16_t number : program.accounts.numbers()) {
    if (program.accounts[number].AcntName == name) return number;
  }
  return 0;
}

bool nothingGoesOn(const Program& program) {
  return program.activity == Activity::Idle && program.dialogs.count == 0 && !program.platform.isAsking();
}

/// The window comes in any case. But nobody is to find another account below a question, or to leave a page that holds
/// what he has changed.
void showAccount(Program& program, const std::string& name) {
  if (program.activity == Activity::Ending) return;
  mnuTrayShow_Click(program);
  const std::int16_t account = accountOf(program, name);
  if (account == 0 || !nothingGoesOn(program) || program.unsaved.any()) return;
  if (program.CurrentPage != emailPage) GoToPage(program, emailPage);
  program.frmMain.TabStripEmail.SelectTab(account);
  TabStripEmail_Click(program);
}

/// The names of the accounts in the order of what can be chosen.
template <class Told>
std::function<void(std::size_t)> showChosen(Program& program, const std::vector<Told>& told) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < std::min(told.size(), noticeAccounts); ++i) names.push_back(told[i].account);
  return [&program, names](std::size_t choice) {
    if (choice < names.size()) showAccount(program, names[choice]);
  };
}

void collectIncomplete(Program& program, CollectedFailures& failures) {
  for (const std::int16_t number : program.accounts.numbers()) {
    const Accounts::Row& row = program.accounts[number];
    if (row.AcntIncomplete) failures.accounts.push_back({row.AcntName, "may lack some of its messages"});
  }
  if (auto warning = takeIncompleteWarning(program)) failures.boxes.push_back(*std::move(warning));
}

/// A walk that was stopped has not reached all, and of what the user wants silenced no box tells.
bool haveAllBeenReached(const Program& program) {
  for (const std::int16_t number : program.accounts.numbers()) {
    const Accounts::Row& row = program.accounts[number];
    if (row.AcntEnabled == 1 && !row.AcntConnected) return false;
  }
  return !program.connection.StopRequested;
}

void showFailures(Program& program, const CollectedFailures& failures) {
  program.platform.showNotice(failuresNotice(failures.accounts),
                              {showChosen(program, failures.accounts), [&program, boxes = failures.boxes] {
                                 auto& untold = program.walk.untold;
                                 untold.insert(untold.end(), boxes.begin(), boxes.end());
                               }});
}

}  // namespace

void BeginWalkNotices(Program& program, bool timed) {
  program.walk.notices = {.timed = timed, .news = {}, .failures = {}};
  const bool collects = timed && program.options.NotifyFailures == 1 && program.platform.hasNotices();
  if (collects) program.walk.notices.failures.emplace();
}

void NoteNews(Program& program, std::int16_t account) {
  Accounts::Row& row = program.accounts[account];
  if (program.options.NotifyNew != 1) row.AcntSeenIDs.clear();
  if (program.options.NotifyNew != 1 || !row.AcntFetched) return;
  auto news = newsOf(row, messagesOf(program, account));
  if (news) program.walk.notices.news.push_back(*std::move(news));
  row.AcntSeenIDs.clear();
  for (const MailMessage& message : messagesOf(program, account)) row.AcntSeenIDs.push_back(message.MsgID);
  std::ranges::sort(row.AcntSeenIDs);
}

WalkNotices takeWalkNotices(Program& program) {
  WalkNotices taken = std::exchange(program.walk.notices, {});
  if (taken.failures) collectIncomplete(program, *taken.failures);
  return taken;
}

/// Who checks by hand sees what comes of it, unless he has asked from the tray.
void ShowWalkNotices(Program& program, const WalkNotices& notices) {
  if (program.activity == Activity::Ending) return;
  const bool isUnseen = notices.timed || program.frmMain.State == WindowState::Minimised;
  if (isUnseen && !notices.news.empty()) {
    program.platform.showNotice(newsNotice(notices.news), {showChosen(program, notices.news)});
  }
  if (!notices.timed) return;
  if (notices.failures && !notices.failures->accounts.empty()) {
    showFailures(program, *notices.failures);
  } else if (haveAllBeenReached(program)) {
    program.platform.withdrawNotice(Notice::Kind::Failures);
  }
}

void ShowUntoldFailures(Program& program) {
  auto& untold = program.walk.untold;
  while (!untold.empty() && nothingGoesOn(program)) {
    const Question box = untold.front();
    untold.erase(untold.begin());
    program.platform.MsgBox(box);
  }
}

}  // namespace velmora
