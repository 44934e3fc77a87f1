#include "options/save_options.h"

#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "accounts/accounts_page.h"
#include "accounts/move_passwords.h"
#include "app/interface_state.h"
#include "app/program.h"
#include "checking/auto_check.h"
#include "checking/follow_machine.h"
#include "messages/sorting.h"
#include "options/button_style.h"
#include "options/client_and_sound.h"
#include "options/keep_settings.h"
#include "options/menu_colours.h"
#include "options/protocol_log.h"

namespace velmora {

namespace {

auto timingOf(const Options& options) {
  return std::tie(options.Hours, options.Minutes, options.NoCheck, options.NoCheckTimeBegin, options.NoCheckTimeEnd);
}

auto themeOf(const Options& options) {
  return std::tie(options.DTheme, options.TopColour, options.MiddleColour, options.BottomColour);
}

/// Only a change touches the entry: one that was removed by hand doesn't come back with every save.
void followRunStartUp(Program& program) {
  if (std::exchange(program.optionsPage.logonEntry, program.options.RunStartUp) == program.options.RunStartUp) return;
  if (program.options.RunStartUp == 1) {
    program.platform.SetRunAtStartUp();
  } else {
    program.platform.ClearRunAtStartUp();
  }
}

/// A switch alone brings back the next time that was kept; another timing gives another one.
void followTiming(Program& program, const Options& before) {
  const Options& now = program.options;
  if (now.UseInterval == 1 && timingOf(now) != timingOf(before)) {
    NextAutoCheck(program, 0, false);
  } else if (now.UseInterval == 1 && before.UseInterval != now.UseInterval) {
    program.autoCheck.NextCheckText = program.autoCheck.SavedNextCheckText;
    program.autoCheck.NextCheckTime = program.autoCheck.SavedNextCheckTime;
  }
  ChooseRunningTimer(program);
}

/// Returns the reason where they can't be kept. Nothing may outlive the program then, and the user may try once more.
std::optional<std::string> keepOptions(Program& program) {
  SettingsStore& settings = program.platform.settings();
  writeOptions(settings, program.options);
  auto reason = settings.Keep();
  if (!reason) followRunStartUp(program);
  program.optionsPage.notKept = reason.has_value();
  return reason;
}

}  // namespace

/// The tray's entries save while a check or a deletion is under way, too.
bool SaveOptions(Program& program) {
  FollowKeyringChoice(program);
  const Options before = program.options;
  takeOver(program.EditOptions, program.options);
  if (themeOf(program.options) != themeOf(before)) WriteMenuStyleFile(program);
  program.order.optionsChanged = true;
  FollowSortOptions(program);
  WatchMachine(program);
  const bool logFollows = FollowProtocolLog(program);
  followTiming(program, before);
  LoadOptionsPage(program);
  RenewClientIcon(program);
  ApplyButtonStyle(program);
  const bool idle = program.activity == Activity::Idle;
  if (idle && !program.unsaved.AcntDirty) ShowAccount(program, program.accounts.AcntCurrent);
  program.frmMain.TreeView.SetFocus();
  const auto reason = keepOptions(program);
  SetInterfaceState(program);
  if (reason) {
    TellNotSaved(program, "The Options hold until " + program.AppTitle + " ends, but were not saved.", *reason);
  }
  if (!logFollows) TellNoProtocolLog(program);
  return !reason;
}

void KeepOptionsAtLast(Program& program) {
  if (!program.optionsPage.notKept) return;
  keepOptions(program);
  if (program.activity != Activity::Ending) SetInterfaceState(program);
}

}  // namespace velmora
