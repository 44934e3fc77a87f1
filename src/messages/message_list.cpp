#include "messages/message_list.h"

#include "app/interface_state.h"
#include "app/program.h"
#include "app/status_bar.h"
#include "messages/decisions/empty_list.h"
#include "messages/decisions/pictures.h"
#include "messages/list_tips.h"
#include "platform/prefetch.h"
#include "rules/rule_fits.h"

namespace velmora {

namespace {

/// What the row's picture means for the counts of attachments and for the button that deletes all spam.
void countPicture(Program& program, std::string_view picture) {
  AttachmentCounts& counts = program.list.listCounts;
  if (picture == "DeleteAttach") ++counts.ListDeleteAttachCount;
  if (picture == "AttachNew") ++counts.ListNewAttachCount;
  if (picture == "Attach") ++counts.ListAttachCount;
  if (picture.starts_with("Spam")) program.list.SpamListed = true;
}

/// Tens of thousands of messages lie all over the memory, and waiting for it takes most of the time that a list of them
/// takes. So what the next ones hold is asked for a little before it is needed, and their texts when it is there.
void fetchAhead(const MessageRange& messages, std::size_t number) {
  constexpr std::size_t ahead = 16;
  if (number + 2 * ahead >= messages.size()) return;
  const MailMessage& far = messages[number + 2 * ahead];
  for (const std::string* member : {&far.From, &far.Subject, &far.Size}) prefetch(member);
  const MailMessage& near = messages[number + ahead];
  for (const std::string* text : {&near.From, &near.To, &near.Subject, &near.Date}) prefetch(text->data());
}

ListRows rowsOf(Program& program, std::int16_t account) {
  constexpr std::size_t columns = 5;
  constexpr std::size_t usualBytes = 150;
  const auto messages = messagesOf(program, account);
  ListRows rows;
  rows.reserve(messages.size(), columns * messages.size(), usualBytes * messages.size());
  for (std::size_t i = 0; i < messages.size(); ++i) {
    fetchAhead(messages, i);
    const MailMessage& message = messages[i];
    rows.add({message.From, message.To, message.Subject, message.Date, message.Size + " KB"});
    rows.look(i) = {std::string(rowPicture(message)), message.New};
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
