#include "messages/message_list.h"

#include "app/interface_state.h"
#include "app/program.h"
#include "app/status_bar.h"
#include "messages/decisions/empty_list.h"
#include "messages/decisions/pictures.h"
#include "messages/list_tips.h"
#include "rules/rule_fits.h"

namespace velmora {

namespace {

/// What a row shows, where it lies.
struct Shown {
  explicit Shown(const MailMessage& message)
      : from(message.From), to(message.To), subject(message.Subject), date(message.Date), size(message.Size) {}

  std::size_t bytes() const { return from.size() + to.size() + subject.size() + date.size() + size.size() + 3; }

  std::string_view from, to, subject, date, size;
};

/// As where they are sorted, it is waiting for memory that takes time: the less is done at a time, the more of these
/// waits overlap.
ListRows textsOf(const MessageRange& messages) {
  std::vector<Shown> shown;
  shown.reserve(messages.size());
  std::size_t bytes = 0;
  for (const MailMessage& message : messages) bytes += shown.emplace_back(message).bytes();
  ListRows rows;
  rows.reserve(shown.size(), 5 * shown.size(), bytes);
  for (const Shown& each : shown) {
    rows.add({each.from, each.to, each.subject, each.date, std::string(each.size) + " KB"});
  }
  return rows;
}

/// What the row's picture means for the counts of attachments and for the button that deletes all spam.
void countPicture(Program& program, std::string_view picture) {
  AttachmentCounts& counts = program.list.listCounts;
  if (picture == "DeleteAttach") ++counts.ListDeleteAttachCount;
  if (picture == "AttachNew") ++counts.ListNewAttachCount;
  if (picture == "Attach") ++counts.ListAttachCount;
  if (picture.starts_with("Spam")) program.list.SpamListed = true;
}

ListRows rowsOf(Program& program, std::int16_t account) {
  const auto messages = messagesOf(program, account);
  ListRows rows = textsOf(messages);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rows.look(i) = {std::string(rowPicture(messages[i])), messages[i].New};
    countPicture(program, rows.look(i).Picture);
  }
  return rows;
}

std::string tabCaption(const Accounts::Row& account) {
  if (account.AcntMsgCount < 1) return account.AcntName;
  return account.AcntName + "  (" + std::to_string(account.AcntMsgCount) + ")";
}

/// What goes with rows that stand anew in the list.
void followRows(Program& program, std::int16_t account) {
  MainWindow& frmMain = program.frmMain;
  if (program.accounts[account].AcntMsgCount > 0) program.list.SelectedMessage = 1;
  frmMain.TabStripEmail.Tabs(account).Caption = tabCaption(program.accounts[account]);
  SetAccountTabImage(program, account);
  EnableMessageActions(program, false);
  RefreshAccountPanels(program, account);
  program.list.AcntLastShown = account;
  RecountRuleFits(program);
}

}  // namespace

void ShowAccountMessages(Program& program, std::int16_t account) {
  if (program.accounts.AcntNum() == 0) return;
  ListView& list = program.frmMain.lvwEmail;
  program.list.SpamListed = false;
  program.list.listCounts = {};
  ForgetListTip(program);
  list.EmptyText = emptyListText(program.accounts[account]);
  list.SetRows(rowsOf(program, account));
  followRows(program, account);
}

void ShowMessagesReordered(Program& program, std::int16_t account, std::span<const std::size_t> order) {
  ListView& list = program.frmMain.lvwEmail;
  if (order.empty() || program.list.AcntLastShown != account || list.Rows().size() != order.size()) {
    ShowAccountMessages(program, account);
    return;
  }
  ForgetListTip(program);
  list.Reorder(order);
  followRows(program, account);
}

MessageRange messagesOf(Program& program, std::int16_t account) {
  return program.messages.Messages(account, program.accounts[account].AcntMsgCount);
}

const MailMessage* selectedMail(Program& program) {
  const auto messages = messagesOf(program, program.accounts.AcntCurrent);
  const std::int16_t number = program.list.SelectedMessage;
  const bool isThere = number >= 1 && static_cast<std::size_t>(number) <= messages.size();
  return isThere ? &messages[static_cast<std::size_t>(number - 1)] : nullptr;
}

void SetAccountTabImage(Program& program, std::int16_t account) {
  const std::string picture = tabPicture(program.accounts[account]);
  program.frmMain.TabStripEmail.Tabs(account).Image = picture;
  program.frmMain.TabStripAcnts.Tabs(account).Image = picture;
}

void EnableMessageActions(Program& program, bool enabled) {
  program.list.MessageSelected = enabled;
  SetInterfaceState(program);
}

}  // namespace velmora
