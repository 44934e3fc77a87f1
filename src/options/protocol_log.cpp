#include "options/protocol_log.h"

#include "app/program.h"
#include "messages/hand_over.h"
#include "options/decisions/option_texts.h"

namespace velmora {

void ConnectProtocolLog(Program& program) {
  program.frmMain.tbrProtocolLog.ButtonClick = [&program](Button& /*button*/) {
    OpenOutside(program, program.platform.programFile(protocolLogName));
  };
}

bool FollowProtocolLog(Program& program) {
  OptionsPageState& state = program.optionsPage;
  const bool wanted = program.options.ProtocolLog == 1;
  if (wanted == state.logKept) return true;
  state.logKept = program.platform.keepProtocolLog(wanted) && wanted;
  state.logBegun = state.logBegun || state.logKept;
  if (state.logKept == wanted) return true;
  program.options.ProtocolLog = 0;
  return false;
}

void TellNoProtocolLog(Program& program) {
  program.platform.MsgBox(protocolLogError(program.AppTitle, program.platform.programFile(protocolLogName)));
}

}  // namespace velmora
