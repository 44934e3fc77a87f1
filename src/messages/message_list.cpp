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

ListView::Row rowOf(const MailMessage& message) {
  return {{message.From, message.To, message.Subject, message.Date, message.Size + " KB"},
          std::string(rowPicture(message)),
          message.New};
}

/// What the row's picture means for the counts of attachments and for the button that deletes all spam.
void countPicture(Program& program, std::string_view picture) {
  AttachmentCounts& counts = program.list.listCounts;
  if (picture == "DeleteAttach") ++counts.ListDeleteAttachCount;
  if (picture == "AttachNew") ++counts.ListNewAttachCount;
  if (picture == "Attach") ++counts.ListAttachCount;
  if (picture.starts_with("Spam")) program.list.SpamListed = true;
}

std::vector<ListView::Row> rowsOf(Program& program, std::int16_t account) {
  std::vector<ListView::Row> rows;
  const auto messages = messagesOf(program, account);
  rows.reserve(messages.size());
  for (const MailMessage& message : messages) {
    rows.push_back(rowOf(message));
    countPicture(program, rows.back().Picture);
  }
  return rows;
}

std::string tabCaption(const Accounts::Row& account) {
  if (account.AcntMsgCount < 1) return account.AcntName;
  return account.AcntName + "  (" + std::to_string(account.AcntMsgCount) + ")";
}

}  // namespace

void ShowAccountMessages(Program& program, std::int16_t account) {
  if (program.accounts.AcntNum() == 0) return;
  MainWindow& frmMain = program.frmMain;
  program.list.SpamListed = false;
  program.list.listCounts = {};
  ForgetListTip(program);
  frmMain.lvwEmail.EmptyText = emptyListText(program.accounts[account]);
  frmMain.lvwEmail.SetRows(rowsOf(program, account));
  if (program.accounts[account].AcntMsgCount > 0) program.list.SelectedMessage = 1;
  frmMain.TabStripEmail.Tabs(account).Caption = tabCaption(program.accounts[account]);
  SetAccountTabImage(program, account);
  EnableMessageActions(program, false);
  RefreshAccountPanels(program, account);
  program.list.AcntLastShown = account;
  RecountRuleFits(program);
}

std::span<MailMessage> messagesOf(Program& program, std::int16_t account) {
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
