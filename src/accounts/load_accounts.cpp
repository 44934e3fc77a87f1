#include "accounts/load_accounts.h"

#include "app/pages.h"
#include "app/program.h"
#include "checking/decisions/check_texts.h"
#include "platform/usable_file.h"

namespace velmora {

namespace {

void loadAccount(Program& program, std::int16_t number) {
  program.accounts.LoadAccount(program.platform.settings(), number);
  program.accounts.CopyAccountToEdit(number);
  Accounts::Row& row = program.accounts[number];
  const std::string picture = row.AcntEnabled == 0 ? "MailNoDisabled" : "MailNo";
  program.frmMain.TabStripEmail.Add(row.AcntName, picture);
  program.frmMain.TabStripAcnts.Add(row.AcntName, picture);
  static_cast<AccountState&>(row) = {};
  row.AcntLastCheckText = "Not Checked";
  row.AcntStatusText = row.AcntName;
  row.AcntLastCheckTime = timeText(program.platform.now());
  row.AcntClientValid = isUsableFile(program.platform, row.AcntClient, ".exe");
  row.AcntSoundValid = isUsableFile(program.platform, row.AcntSound, ".wav");
}

}  // namespace

void LoadAccounts(Program& program, std::int16_t count) {
  for (TabStrip* strip : {&program.frmMain.TabStripEmail, &program.frmMain.TabStripAcnts}) {
    while (strip->Count() > 0) strip->RemoveLast();
  }
  program.accounts.ResizeAccounts(0);
  program.accounts.ResizeAccounts(count);
  program.messages.ResizeAccountStore(0);
  program.messages.ResizeAccountStore(count);
  for (std::int16_t number = 1; number <= count; ++number) loadAccount(program, number);
  program.accounts.AcntCurrent = count > 0 ? 1 : 0;
  if (count == 0) ShowNoAccounts(program);
}

}  // namespace velmora
