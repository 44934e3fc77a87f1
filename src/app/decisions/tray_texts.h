#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace velmora {

/// What is said where the window was to go to the tray and there is none.
inline Question noTrayNotice(std::string_view appTitle) {
  return {
      "No system tray was found on this desktop.\r\n\r\nVelmora stays on the screen or its task bar instead,\r\n"
      "and goes on working there. Once there is a system\r\ntray, closing the window takes it there.\r\n",
      std::string(appTitle) + " - No System Tray"};
}

}  // namespace velmora
