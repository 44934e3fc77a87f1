#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"

namespace velmora {

/// What is said where there is no email client to start.
inline Question clientError(std::string_view appTitle) {
  return {"The Email Client Program failed!\r\n\r\nIt appears the path and/or filename" + std::string(20, ' ') +
              "\r\ndo not exist or have changed location.\r\n\r\nThe FileName must have a file extension\r\n"
              "that ends with '.exe' to work properly.\r\n\r\n",
          std::string(appTitle) + " - Email Client Error"};
}

}  // namespace velmora
