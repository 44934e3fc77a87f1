#include "messages/email_page.h"

#include <array>
#include <cmath>

#include "app/program.h"
#include "checking/check_cycle.h"
#include "checking/deletion.h"
#include "messages/hand_over.h"
#include "messages/list_tips.h"
#include "messages/message_list.h"
#include "messages/preview.h"
#include "messages/save_original.h"
#include "messages/sorting.h"
#include "options/client_and_sound.h"
#include "platform/failure.h"

namespace velmora {

namespace {

constexpr std::array widthKeys = {"ColFromWidth", "ColToWidth", "ColSubjectWidth", "ColDateWidth", "ColSizeWidth"};

std::int16_t usualWidth(const Program& program) {
  return text::toInt16(static_cast<std::int64_t>(program.frmMain.lvwEmail.Width / 4.5));
}

/// Size, the last column, gets by with less.
std::int16_t standardWidth(std::size_t column, std::int16_t usual) {
  return column == widthKeys.size() - 1 ? static_cast<std::int16_t>(std::lrint(usual / 2.15)) : usual;
}

/// Without stored widths every column, Size too, gets the usual one.
void restoreKeptWidths(Program& program) {
  const std::int16_t usual = usualWidth(program);
  for (std::size_t i = 0; i < widthKeys.size(); ++i) {
    const std::string kept = program.platform.settings().GetSetting(optionsSection, widthKeys[i], toText(usual));
    program.frmMain.lvwEmail.Columns[i].Width = fromText(kept, usual);
  }
}

void lvwEmail_ItemClick(Program& program) {
  program.pointer.ItemUnderPointer = true;
  program.pointer.HoverMessage = 1;
}

void lvwEmail_Click(Program& program) {
  if (program.accounts[program.accounts.AcntCurrent].AcntMsgCount == 0) return;
  ListView& list = program.frmMain.lvwEmail;
  bool onRow = program.pointer.ItemUnderPointer;
  try {
    program.list.SelectedMessage = static_cast<std::int16_t>(list.SelectedItem());
  } catch (const RunTimeFailure&) {
    onRow = false;  // none is selected: the last selected message stays, but nothing is to be done with it
  }
  if (!onRow) list.DeselectAll();
  EnableMessageActions(program, onRow);
  if (onRow) FollowInPreview(program);
}

/// What the list and its menu do in place of a button. While a check or a deletion runs they are as dead as it is.
void pressInPlace(Program& program, const char* key) {
  if (program.activity == Activity::Idle) program.frmMain.tbrEmail[key].click();
}

void lvwEmail_RightClick(Program& program) {
  lvwEmail_Click(program);
  program.frmMain.mnuEmailPopMenu.PopUp();
  program.pointer.ItemUnderPointer = program.pointer.HoverMessage >= 1;
}

/// Keeps the dotted focus mark off a list that the pointer isn't on.
void lvwEmail_GotFocus(Program& program) {
  if (program.pointer.HoverMessage == 0) program.frmMain.cmdTakeFocus.SetFocus();
}

void tbrEmail_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "EmailPreview") PreviewMessage(program);
  if (button.Key == "EmailDelete") DeleteSelectedMessages(program);
  if (button.Key == "EmailSpam") DeleteSpamMessages(program);
  if (button.Key == "EmailReply") ReplyToMessage(program);
  if (button.Key == "EmailOpen") OpenMessage(program);
  if (button.Key == "EmailNew") NewMessage(program);
  if (button.Key == "EmailCheck") CheckCurrentAccount(program);
}

}  // namespace

void ConnectEmailPage(Program& program) {
  MainWindow& frmMain = program.frmMain;
  ListView& list = frmMain.lvwEmail;
  list.ItemClick = [&program] { lvwEmail_ItemClick(program); };
  list.Click = [&program] { lvwEmail_Click(program); };
  list.DblClick = [&program] { pressInPlace(program, "EmailPreview"); };
  list.DeleteKey = [&program] { pressInPlace(program, "EmailDelete"); };
  list.RightClick = [&program] { lvwEmail_RightClick(program); };
  list.MouseMove = [&program](std::int32_t row, std::int32_t x) { lvwEmail_MouseMove(program, row, x); };
  list.ColumnClick = [&program](const std::string& header) { lvwEmail_ColumnClick(program, header); };
  list.GotFocus = [&program] { lvwEmail_GotFocus(program); };
  frmMain.TabStripEmail.Click = [&program] { TabStripEmail_Click(program); };
  for (TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) {
    strip->GotFocus = [&program] {
      const bool otherWindow = program.frmPreview.PreviewOpen || program.frmRuleReport.RuleReportOpen ||
                               program.frmMessage.AutoMessageOpen || program.frmFirstUse.FirstUseOpen;
      if (!otherWindow) program.frmMain.cmdTakeFocus.SetFocus();
    };
  }
  list.ColumnRightClick = [&frmMain] { frmMain.mnuColumns.PopUp(); };
  frmMain.mnuRestoreColWidth.Click = [&program] { RestoreColumnWidths(program); };
  frmMain.mnuEmailPreview.Click = [&program] { pressInPlace(program, "EmailPreview"); };
  frmMain.mnuEmailDelete.Click = [&program] { pressInPlace(program, "EmailDelete"); };
  frmMain.mnuEmailReply.Click = [&program] { pressInPlace(program, "EmailReply"); };
  frmMain.mnuEmailOpen.Click = [&program] { pressInPlace(program, "EmailOpen"); };
  frmMain.mnuEmailSaveOriginal.Click = [&program] { SaveOriginal(program); };
  frmMain.tbrEmail.ButtonClick = [&program](Button& button) { tbrEmail_ButtonClick(program, button); };
}

void TabStripEmail_Click(Program& program) {
  if (program.accounts.AcntNum() == 0) return;
  const auto account = static_cast<std::int16_t>(program.frmMain.TabStripEmail.SelectedItem());
  program.accounts.AcntCurrent = account;
  if (account == program.list.AcntLastShown) return;
  ShowClientIcon(program);
  ShowAccountMessages(program, account);
}

void ShowTabAnew(Program& program, std::int16_t account) {
  program.accounts.AcntCurrent = account;
  program.list.AcntLastShown = 0;
  if (account == 0) return;
  program.frmMain.TabStripEmail.SelectTab(account);
  TabStripEmail_Click(program);
}

void SetColumnWidths(Program& program) {
  loadOptions(program.platform.settings(), OptionField::Read::WithTheList, program.options);
  if (program.options.RestoreColWidth == 1) {
    RestoreColumnWidths(program);
  } else {
    restoreKeptWidths(program);
  }
}

void RestoreColumnWidths(Program& program) {
  for (std::size_t i = 0; i < widthKeys.size(); ++i) {
    program.frmMain.lvwEmail.Columns[i].Width = standardWidth(i, usualWidth(program));
  }
}

void SaveColumnWidths(Program& program) {
  if (program.options.RestoreColWidth != 0) return;
  const ListView& list = program.frmMain.lvwEmail;
  for (std::size_t i = 0; i < widthKeys.size(); ++i) {
    program.platform.settings().SaveSetting(optionsSection, widthKeys[i], toText(list.Columns[i].Width.get()));
  }
}

}  // namespace velmora
