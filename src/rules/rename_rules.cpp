#include "rules/rename_rules.h"

#include <utility>

#include "app/program.h"

namespace velmora {

void ConnectRuleFile(Program& /*program*/) {}

void RenameRuleFile(Program& /*program*/) {}

void frmRuleFile_Unload(Program& /*program*/) {}

}  // namespace velmora
