#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace velmora {

/// What is said where the window was to go to the tray and there is none.
inline Question noTrayNotice(std::string_view appTitle) {
  return {
      "No system tray was found on this desktop.\r\n\r\nVelmora stays on the task bar instead, and goes\r\n"
      "on working there. It will move to the system tray\r\nas soon as there is one.\r\n",
      std::string(appTitle) + " - No System Tray"};
}

}  // namespace velmora
