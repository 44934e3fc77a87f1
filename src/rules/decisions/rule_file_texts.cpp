#include "rules/decisions/rule_file_texts.h"

namespace velmora {}  // namespace velmora
