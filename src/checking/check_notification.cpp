#include "checking/check_notification.h"

#include <utility>

#include "accounts/decisions/account_list.h"
#include "app/program.h"
#include "app/shut_down.h"
#include "checking/auto_check.h"
#include "checking/decisions/check_texts.h"
#include "platform/usable_file.h"

namespace velmora {

namespace {

/// The help's topic of Auto Check.
constexpr int autoCheckHelp = 220;

/// What is saved counts here, whatever the page shows.
bool defaultSoundInForce(const Program& program) {
  return isUsableFile(program.platform, program.options.DefaultSound, ".wav");
}

/// The file that belongs to an account, blank for none. One that was not reached sounds differently.
std::string soundOf(const Program& program, std::int16_t account) {
  const Accounts::Row& row = program.accounts[account];
  if (!row.AcntConnected) return row.AcntSoundOn != 0 ? program.platform.soundFile("Error.wav") : std::string();
  if (defaultSoundInForce(program)) return program.options.DefaultSound;
  return isUsableFile(program.platform, row.AcntSound, ".wav") ? row.AcntSound : std::string();
}

void PlaySoundFile(Program& program, std::int16_t account) {
  const std::string path = soundOf(program, account);
  if (!path.empty()) PlayWave(program, path);
}

void startCountDown(Program& program) {
  CheckMessageWindow& window = program.frmMessage;
  window.countDown.Begin(program.options.MsgBoxTime);
  const bool closesByItself = program.options.MsgBoxTime != 0;
  window.tmrMessage.Enabled = closesByItself;
  window.lblMsgCountDown.Visible = closesByItself;
  window.imgHourGlass.Visible = closesByItself;
}

void frmMessage_Load(Program& program) {
  CheckMessageWindow& window = program.frmMessage;
  SuspendAutoCheck(program, TimerAction::Suspend);
  program.frmMessage.AutoMessageOpen = true;
  window.Caption = program.AppTitle + ":  Auto Check - " +
                   formatDateTime(program.platform.now(), "mmmm d, yyyy", program.platform.dateNames());
  window.lblMsg.Caption = accountList(program.walk.AccountInfoText, program.walk.AccountInfoLines);
  window.LabelLines = accountListLines(program.walk.AccountInfoLines);
  startCountDown(program);
  window.lblAutoCheck.Caption = "Next " + program.autoCheck.NextCheckText;
}

void showMessage(Program& program, const std::string& headline) {
  CheckMessageWindow& window = program.frmMessage;
  window.Visible = false;  // one that is still open takes the size of its new text as well
  window.fraMsg.Caption = headline;
  frmMessage_Load(program);
  window.AlwaysOnTop = true;
  window.HiddenWithMain = false;  // as one before it may have been
  window.Visible = true;
}

void tmrMessage_Timer(Program& program) {
  if (!program.frmMessage.countDown.GoOn(program.options.MsgBoxTime)) frmMessage_Unload(program);
}

}  // namespace

void ConnectMessage(Program& program) {
  CheckMessageWindow& window = program.frmMessage;
  window.tbrButtons.ButtonClick = [&program](Button&) { frmMessage_Unload(program); };
  window.tmrMessage.Tick = [&program] { tmrMessage_Timer(program); };
  window.Help = [&program] { program.platform.showHelp(autoCheckHelp); };
  window.Activate = [&window] { window.AlwaysOnTop = true; };
  window.Close = [&program] { frmMessage_Unload(program); };
}

void AnnounceCheck(Program& program, const WalkFindings& found) {
  const Options& options = program.options;
  if (program.activity == Activity::Ending || (options.ShowEmailMsgBox == 0 && options.PlaySound == 0)) return;
  if (options.ShowEmailMsgBox != 0) {
    const auto headline = messageHeadline(options.ShowEmail, found, timeText(program.platform.now()));
    if (!headline) return;
    showMessage(program, *headline);
  }
  PlayCheckSound(program, 0);
}

void PlayCheckSound(Program& program, std::int16_t account) {
  if (!program.sounds.SoundMaster || program.options.PlaySound == 0) return;
  for (const std::int16_t number :
       soundingAccounts(program.accounts, account, program.options.ShowEmail, defaultSoundInForce(program))) {
    const bool goesOn =
        program.sounds.SoundMaster && program.activity != Activity::Ending && number <= program.accounts.AcntNum();
    if (goesOn) PlaySoundFile(program, number);
  }
}

bool PlayWave(Program& program, const std::string& path) {
  program.platform.yield();
  return program.platform.playSound(path);
}

void frmMessage_Unload(Program& program) {
  if (!std::exchange(program.frmMessage.AutoMessageOpen, false)) return;
  program.frmMessage.tmrMessage.Enabled = false;
  program.frmMessage.Visible = false;
  LetAutoCheckGoOn(program);
}

}  // namespace velmora
