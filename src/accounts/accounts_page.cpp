#include "accounts/accounts_page.h"

#include <functional>
#include <utility>

#include "accounts/account_order.h"
#include "accounts/decisions/account_names.h"
#include "accounts/decisions/account_texts.h"
#include "accounts/decisions/keyring_texts.h"
#include "accounts/save_account.h"
#include "app/interface_state.h"
#include "app/program.h"
#include "checking/connection_test.h"
#include "messages/email_page.h"
#include "messages/message_list.h"
#include "options/client_and_sound.h"
#include "platform/file_name.h"
#include "platform/set_for_now.h"
#include "platform/usable_file.h"

namespace velmora {

namespace {

/// What the user types into, and what he ticks, beside the members of the working copy that they stand for. The paths
/// are not among them: a default may take their places.
struct TextInput {
  TextBox AccountsPage::*box;
  std::string Account::*member;
};
struct TickInput {
  CheckBox AccountsPage::*box;
  std::int16_t Account::*member;
};

constexpr std::array<TextInput, 5> textInputs = {{
    {&AccountsPage::txtAcntName, &Account::AcntName},
    {&AccountsPage::txtAcntServer, &Account::AcntServer},
    {&AccountsPage::txtAcntPort, &Account::AcntPort},
    {&AccountsPage::txtAcntLoginID, &Account::AcntLoginID},
    {&AccountsPage::txtAcntPassword, &Account::AcntPassword},
}};
constexpr std::array<TickInput, 3> tickInputs = {{
    {&AccountsPage::chkAcntEnabled, &Account::AcntEnabled},
    {&AccountsPage::chkAcntSecure, &Account::AcntSecure},
    {&AccountsPage::chkAcntSoundOn, &Account::AcntSoundOn},
}};

Account& edited(Program& program) { return program.accounts.Edit(program.accounts.AcntCurrent); }

void followClient(Program& program) {
  const bool isValid = program.accounts[program.accounts.AcntCurrent].AcntClientValid;
  const std::string& used = program.DefaultClientValid ? program.options.DefaultClient : edited(program).AcntClient;
  program.frmMain.lblClientName.Caption = program.DefaultClientValid || isValid ? fileNamePart(used) : std::string();
}

void followSound(Program& program) {
  MainWindow& page = program.frmMain;
  Accounts::Row& row = program.accounts[program.accounts.AcntCurrent];
  const std::string& path = edited(program).AcntSound;
  row.AcntSoundValid = isUsableFile(program.platform, path, ".wav");
  const std::string& used = program.sounds.DefaultSoundValid ? program.options.DefaultSound : path;
  page.lblSoundName.Caption =
      program.sounds.DefaultSoundValid || row.AcntSoundValid ? fileNamePart(used) : std::string();
  page.chkAcntSoundOn.Visible = !program.sounds.DefaultSoundValid && row.AcntSoundValid;
  page.lblAcntPlaySound.Visible = program.sounds.DefaultSoundValid;
}

/// A default wins over the account's own path, which is kept for the time without one.
void showPath(TextBox& box, const std::string& path, bool hasDefault, std::string_view notice) {
  box.Text = hasDefault ? std::string(notice) : path;
  box.Enabled = !hasDefault;
}

void showClientAndSound(Program& program) {
  MainWindow& page = program.frmMain;
  ShowClientIcon(program);  // and looks which client is there
  const Account& account = edited(program);
  showPath(page.txtAcntClient, account.AcntClient, program.DefaultClientValid, usingDefaultClient);
  showPath(page.txtAcntSound, account.AcntSound, program.sounds.DefaultSoundValid, usingDefaultSound);
  followClient(program);
  followSound(program);
  page.lblAcntRunSize.Caption = program.EditOptions.RunSize == 1 ? "Run: Normal" : "Run: Maximized";
  page.lblAcntPlaySound.Caption = program.EditOptions.PlaySound == 1 ? "Sound: On" : "Sound: Off";
}

void followSecure(Program& program) {
  program.frmMain.lblAcntSecure.Caption = protectionText(edited(program), program.options.RefuseUntrusted == 1);
}

void showPasswordNotice(Program& program) {
  const Accounts::Row& row = program.accounts[program.accounts.AcntCurrent];
  const bool isHeld = !row.AcntKeyringKey.empty() && !row.AcntPasswordKnown && edited(program).AcntPassword.empty();
  program.frmMain.lblAcntPasswordNotice.Caption = isHeld ? heldByKeyring : "";
}

void fillControls(Program& program) {
  const SetForNow loading(program.acnts.AcntLoading, true);
  AccountsPage& page = program.frmMain;
  const Account& account = edited(program);
  for (const auto& [box, member] : textInputs) (page.*box).Text = account.*member;
  for (const auto& [box, member] : tickInputs) (page.*box).Value = account.*member;
  showPasswordNotice(program);
  page.txtAcntColour.BackColour = account.AcntColour;
  page.fraColourBox.Visible = false;
  followSecure(program);
  showClientAndSound(program);
}

/// What can be done to a changed account, and to one that isn't.
void showDirty(Program& program, bool dirty) {
  program.unsaved.AcntDirty = dirty;
  SetInterfaceState(program);
}

/// The values that another valid default hides never differ: the user can't have changed them.
bool differs(Program& program) {
  const Account& record = program.accounts[program.accounts.AcntCurrent];
  const Account& edit = edited(program);
  for (const auto& field : accountFields()) {
    if (field.key == "AcntColourIndex") continue;
    if (!isEqual(field, record, edit)) return true;
  }
  return false;
}

/// Acts on the account that the page shows. A check that is under way may have another one current.
void onAccountOfPage(Program& program, const std::function<void()>& act) {
  if (program.accounts.AcntNum() == 0) {
    act();
    return;
  }
  const auto shown = static_cast<std::int16_t>(program.frmMain.TabStripAcnts.SelectedItem());
  const std::int16_t current = std::exchange(program.accounts.AcntCurrent, shown);
  act();
  program.accounts.AcntCurrent = current;
}

/// The user has changed something. A screen reader can write where nobody else can: that is taken back.
bool isUsersChange(Program& program) {
  if (program.acnts.AcntLoading) return false;
  if (program.accounts.AcntNum() > 0 && program.frmMain.fraAcnt.Enabled) return true;
  onAccountOfPage(program, [&program] { fillControls(program); });
  return false;
}

void takeText(Program& program, const TextInput& input) {
  if (!isUsersChange(program)) return;
  edited(program).*input.member = (program.frmMain.*input.box).Text;
  showPasswordNotice(program);
  AccountDirtyCheck(program);
}

void takeTick(Program& program, const TickInput& input) {
  if (!isUsersChange(program)) return;
  edited(program).*input.member = (program.frmMain.*input.box).Value;
  followSecure(program);
  AccountDirtyCheck(program);
}

void txtAcntClient_Change(Program& program) {
  if (!isUsersChange(program) || !program.frmMain.txtAcntClient.Enabled) return;
  edited(program).AcntClient = program.frmMain.txtAcntClient.Text;
  ShowClientIcon(program);
  followClient(program);
  AccountDirtyCheck(program);
}

void txtAcntSound_Change(Program& program) {
  if (!isUsersChange(program) || !program.frmMain.txtAcntSound.Enabled) return;
  edited(program).AcntSound = program.frmMain.txtAcntSound.Text;
  followSound(program);
  AccountDirtyCheck(program);
}

void lblColourBox_Click(Program& program, std::size_t box) {
  if (!isUsersChange(program)) return;
  MainWindow& frmMain = program.frmMain;
  const std::int32_t colour = frmMain.lblColourBox[box].BackColour;
  edited(program).AcntColourIndex = static_cast<std::int32_t>(box + 1);
  frmMain.txtAcntColour.BackColour = colour;
  edited(program).AcntColour = colour;
  AccountDirtyCheck(program);
  frmMain.fraColourBox.Visible = false;
}

void moveTo(Program& program, std::int16_t account) {
  program.accounts.AcntCurrent = account;
  program.frmMain.TabStripAcnts.SelectTab(account);
  ShowAccount(program, account);
}

Answer askAboutChanges(Program& program) {
  TabStrip& strip = program.frmMain.TabStripAcnts;
  return program.platform.MsgBox(changesNotSaved(strip.Tabs(strip.SelectedItem()).Caption.get()));
}

/// Both answers that leave the account do so even where its name is refused: its changes are gone then. One that can't
/// be kept is not left.
void leaveChangedAccount(Program& program, std::int16_t target) {
  const std::int16_t current = program.accounts.AcntCurrent;
  if (target == current) return;
  program.frmMain.TabStripAcnts.SelectTab(current);
  const Answer answer = askAboutChanges(program);
  if (answer == Answer::No) return;
  if (answer == Answer::Yes && SaveAccount(program) == Saving::NotKept) return;
  ShowAccount(program, current);
  moveTo(program, target);
}

void TabStripAcnts_Click(Program& program) {
  if (program.acnts.AcntBusy || program.accounts.AcntNum() == 0) return;
  MainWindow& frmMain = program.frmMain;
  if (!program.acnts.AcntLoading && frmMain.State == WindowState::Normal) frmMain.txtAcntName.SetFocus();
  const auto selected = static_cast<std::int16_t>(frmMain.TabStripAcnts.SelectedItem());
  if (!program.unsaved.AcntDirty) {
    program.accounts.AcntCurrent = selected;
    ShowAccount(program, selected);
    return;
  }
  const SetForNow busy(program.acnts.AcntBusy, true);
  leaveChangedAccount(program, selected);
}

/// A key reaches the buttons during a test as well.
void tbrAcnts_ButtonClick(Program& program, const Button& button) {
  if (program.activity != Activity::Idle) return;
  if (button.Key == "AcntAdd") AddAccount(program);
  if (button.Key == "AcntDelete") DeleteAccount(program);
  if (button.Key == "AcntTest") TestCurrentAccount(program);
}

void tbrMoveButtons_ButtonClick(Program& program, const Button& button) {
  const std::int16_t offset = button.Key == "Backward" ? -1 : 1;
  SwapAccounts(program, program.accounts.AcntCurrent, offset);
}

void connectInputs(Program& program) {
  const SetForNow loading(program.acnts.AcntLoading, true);
  AccountsPage& page = program.frmMain;
  for (const TextInput& input : textInputs) {
    (page.*input.box).Text.watch([&program, &input](const std::string&) { takeText(program, input); });
  }
  for (const TickInput& input : tickInputs) {
    (page.*input.box).Value.watch([&program, &input](std::int16_t) { takeTick(program, input); });
  }
  page.txtAcntPort.Text.watch(
      [&page](const std::string& port) { page.lblAcntPortNotice.Caption = isPort(port) ? "" : badPort; });
  page.txtAcntClient.Text.watch([&program](const std::string&) { txtAcntClient_Change(program); });
  page.txtAcntSound.Text.watch([&program](const std::string&) { txtAcntSound_Change(program); });
  for (std::size_t box = 0; box < page.lblColourBox.size(); ++box) {
    page.lblColourBox[box].Click = [&program, box] { lblColourBox_Click(program, box); };
  }
}

}  // namespace

void ConnectAccountsPage(Program& program) {
  connectInputs(program);
  AccountsPage& page = program.frmMain;
  page.tbrAcnts.ButtonClick = [&program](Button& button) { tbrAcnts_ButtonClick(program, button); };
  page.tbrMoveButtons.ButtonClick = [&program](Button& button) { tbrMoveButtons_ButtonClick(program, button); };
  page.tbrColour.ButtonClick = [&page](Button&) { page.fraColourBox.Visible = true; };
  page.TabStripAcnts.Click = [&program] { TabStripAcnts_Click(program); };
}

void ShowAccount(Program& program, std::int16_t number) {
  program.accounts.CopyAccountToEdit(number);
  program.frmMain.hidePassword.raise();
  fillControls(program);
  showDirty(program, false);
  if (number == 0) return;
  SetAccountTabImage(program, number);
  program.frmMain.TabStripEmail.SelectTab(number);  // list, panels and an open preview follow
}

Account& ShownAccount(Program& program) {
  const bool some = program.accounts.AcntNum() > 0;
  return program.accounts.Edit(some ? static_cast<std::int16_t>(program.frmMain.TabStripAcnts.SelectedItem())
                                    : std::int16_t{0});
}

void SetAccountPath(Program& program, std::string Account::*path, const std::string& chosen) {
  onAccountOfPage(program, [&] {
    edited(program).*path = chosen;
    fillControls(program);
    AccountDirtyCheck(program);
  });
}

void LearnPassword(Program& program, std::int16_t account, const std::string& password) {
  Accounts::Row& row = program.accounts[account];
  Account& edit = program.accounts.Edit(account);
  const bool isUntouched = edit.AcntPassword == row.AcntPassword;
  row.AcntPassword = password;
  row.AcntPasswordKnown = true;
  if (!isUntouched) return;
  edit.AcntPassword = password;
  if (account != program.frmMain.TabStripAcnts.SelectedItem()) return;
  onAccountOfPage(program, [&program, &password] {
    const SetForNow loading(program.acnts.AcntLoading, true);
    program.frmMain.txtAcntPassword.Text = password;
    showPasswordNotice(program);
  });
}

void AccountDirtyCheck(Program& program) {
  if (!program.acnts.AcntLoading) showDirty(program, differs(program));
}

bool SettleChanges(Program& program) {
  if (!program.unsaved.AcntDirty) return true;
  if (program.acnts.AcntBusy) return false;
  const SetForNow busy(program.acnts.AcntBusy, true);
  const Answer answer = askAboutChanges(program);
  onAccountOfPage(program, [&] {
    if (answer == Answer::Yes) SaveAccount(program);
    if (answer == Answer::Cancel) ShowAccount(program, program.accounts.AcntCurrent);
  });
  return !program.unsaved.AcntDirty;
}

}  // namespace velmora
