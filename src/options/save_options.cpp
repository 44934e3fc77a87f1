#include "options/save_options.h"

#include <tuple>

#include "accounts/accounts_page.h"
#include "app/program.h"
#include "checking/auto_check.h"
#include "messages/email_page.h"
#include "messages/sorting.h"
#include "options/button_style.h"
#include "options/keep_settings.h"
#include "options/menu_colours.h"

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
  if (program.EditOptions.RunStartUp == program.options.RunStartUp) return;
  if (program.EditOptions.RunStartUp == 1) {
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

}  // namespace

/// The tray's entries save while a check or a deletion is under way, too, which counts on the order of the messages.
bool SaveOptions(Program& program) {
  followRunStartUp(program);
  const Options before = program.options;
  takeOver(program.EditOptions, program.options);
  if (themeOf(program.options) != themeOf(before)) WriteMenuStyleFile(program);
  writeOptions(program.platform.settings(), program.options);
  const bool idle = program.activity == Activity::Idle;
  if (idle) FollowSortOptions(program);
  followTiming(program, before);
  LoadOptionsPage(program);
  ApplyButtonStyle(program);
  if (idle && !program.unsaved.AcntDirty) ShowAccount(program, program.accounts.AcntCurrent);
  program.frmMain.TreeView.SetFocus();
  return KeepSettings(program, "The Options hold until " + program.AppTitle + " ends, but were not saved.");
}

}  // namespace velmora
