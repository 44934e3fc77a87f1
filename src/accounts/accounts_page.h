#pragma once

#include "platform/controls/frame.h"
#include "platform/controls/tab_strip.h"

namespace velmora {

/// The controls of the Accounts page.
struct AccountsPage {
  Frame fraAcntToolBar;
  TabStrip TabStripAcnts;
};

}  // namespace velmora
