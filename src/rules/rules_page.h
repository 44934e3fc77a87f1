#pragma once

#include "platform/controls/simple_controls.h"

namespace velmora {

/// The controls of the Rules page.
struct RulesPage {
  Label lblRulesFileName;
};

}  // namespace velmora
