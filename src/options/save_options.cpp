#include "options/save_options.h"

#include "app/program.h"
#include "checking/check_cycle.h"
#include "messages/email_client.h"
#include "messages/sorting.h"

namespace velmora {

namespace {

/// Only a change touches the entry: one that was removed by hand doesn't come back with every save.
void followRunStartUp(Program& program) {
  if (program.EditOptions.RunStartUp == program.options.RunStartUp) return;
  if (program.EditOptions.RunStartUp == 1) {
    program.platform.SetRunAtStartUp();
  } else {
    program.platform.ClearRunAtStartUp();
  }
}

}  // namespace

void SaveOptions(Program& program) {
  followRunStartUp(program);
  takeOver(program.EditOptions, program.options);
  program.DefaultClientValid = isFileWithEnding(program, program.options.DefaultClient, ".exe");
  writeOptions(program.platform.settings(), program.options);
  FollowSortOptions(program);
  ChooseRunningTimer(program);
}

}  // namespace velmora
