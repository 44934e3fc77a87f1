#include "messages/email_page.h"

#include <array>
#include <cmath>

#include "app/program.h"
#include "checking/check_cycle.h"
#include "messages/message_list.h"
#include "messages/sorting.h"
#include "platform/failure.h"

namespace velmora {

namespace {

constexpr std::array widthKeys = {"ColFromWidth", "ColToWidth", "ColSubjectWidth", "ColDateWidth", "ColSizeWidth"};

/// Size, the last column, gets by with less.
std::int16_t standardWidth(std::size_t column, std::int16_t usual) {
  return column == widthKeys.size() - 1 ? static_cast<std::int16_t>(std::lrint(usual / 2.15)) : usual;
}

/// Without a stored width every column, Size too, gets the usual one.
std::int16_t storedWidth(Program& program, std::string_view key, std::int16_t usual) {
  return fromText(program.platform.settings().GetSetting(optionsSection, key, toText(usual)), usual);
}

void lvwEmail_ItemClick(Program& program) {
  program.ItemUnderPointer = true;
  program.HoverMessage = 1;
}

void lvwEmail_Click(Program& program) {
  if (program.accounts[program.accounts.AcntCurrent].AcntMsgCount == 0) return;
  ListView& list = program.frmMain.lvwEmail;
  try {
    program.SelectedMessage = static_cast<std::int16_t>(list.SelectedItem());
  } catch (const RunTimeFailure&) {
    // A click beside the rows with none selected: the last selected message stays.
  }
  if (!program.ItemUnderPointer) list.Deselect(program.SelectedMessage);
  EnableMessageActions(program, program.ItemUnderPointer);
}

void lvwEmail_RightClick(Program& program) {
  lvwEmail_Click(program);
  program.frmMain.mnuEmailPopMenu.PopUp();
  program.ItemUnderPointer = program.HoverMessage >= 1;
}

void lvwEmail_MouseMove(Program& program, std::int32_t row) {
  program.HoverMessage = static_cast<std::int16_t>(row);
  program.ItemUnderPointer = row > 0;
}

/// Keeps the dotted focus mark off a list that the pointer isn't on.
void lvwEmail_GotFocus(Program& program) {
  if (program.HoverMessage == 0) program.frmMain.cmdTakeFocus.SetFocus();
}

void tbrEmail_ButtonClick(Program& program, const Button& button) {
  if (button.Key == "EmailCheck") CheckCurrentAccount(program);
}

}  // namespace

void ConnectEmailPage(Program& program) {
  MainWindow& frmMain = program.frmMain;
  ListView& list = frmMain.lvwEmail;
  list.ItemClick = [&program] { lvwEmail_ItemClick(program); };
  list.Click = [&program] { lvwEmail_Click(program); };
  list.RightClick = [&program] { lvwEmail_RightClick(program); };
  list.MouseMove = [&program](std::int32_t row) { lvwEmail_MouseMove(program, row); };
  list.ColumnClick = [&program](const std::string& header) { lvwEmail_ColumnClick(program, header); };
  list.GotFocus = [&program] { lvwEmail_GotFocus(program); };
  frmMain.TabStripEmail.Click = [&program] { TabStripEmail_Click(program); };
  for (TabStrip* strip : {&frmMain.TabStripEmail, &frmMain.TabStripAcnts}) {
    strip->GotFocus = [&frmMain] { frmMain.cmdTakeFocus.SetFocus(); };
  }
  frmMain.tbrEmail.ButtonClick = [&program](Button& button) { tbrEmail_ButtonClick(program, button); };
}

void TabStripEmail_Click(Program& program) {
  if (program.accounts.AcntNum() == 0) return;
  const auto account = static_cast<std::int16_t>(program.frmMain.TabStripEmail.SelectedItem());
  program.accounts.AcntCurrent = account;
  if (account == program.AcntLastShown) return;
  ShowAccountMessages(program, account);
  program.AcntLastShown = account;
}

void SetColumnWidths(Program& program) {
  loadOptions(program.platform.settings(), OptionField::Read::WithTheList, program.options);
  ListView& list = program.frmMain.lvwEmail;
  const auto usual = text::toInt16(static_cast<std::int64_t>(list.Width / 4.5));
  for (std::size_t i = 0; i < widthKeys.size(); ++i) {
    list.Columns[i].Width =
        program.options.RestoreColWidth == 1 ? standardWidth(i, usual) : storedWidth(program, widthKeys[i], usual);
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
