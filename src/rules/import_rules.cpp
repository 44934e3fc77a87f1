#include "rules/import_rules.h"

namespace velmora {

void ImportRules(Program& /*program*/) {}

}  // namespace velmora
