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

/// What is said where one is there and can't be started.
inline Question clientNotStarted(std::string_view appTitle, const std::string& path) {
  return {
      "The Email Client Program could not be started:\r\n" + path +
          "\r\n\r\nThe file is there, but it is no program that you may run,\r\nor what it leads to is missing.\r\n",
      std::string(appTitle) + " - Email Client Error"};
}

/// What is said where no program can be started to open a message.
inline Question openFailed(std::string_view appTitle, std::string_view supportAddress) {
  return {
      "The message failed to open using\r\nyour Default Email Client.\r\n\r\n"
      "If this problem occurs for every message\r\nyou attempt to Open please report this to\r\n"
      "Kestrum for further" +
          std::string(10, ' ') + "\r\nanalysis. Please include the name of your\r\nEmail program.\r\n\r\nEmail: " +
          std::string(supportAddress),
      std::string(appTitle) + " - Open Message Failed"};
}

/// What is said where the desktop has no program for an address or a file.
inline Question nothingOpens(std::string_view appTitle, const std::string& target) {
  const bool isMail = target.starts_with("mailto:");
  return {(isMail ? "There is no program here that writes messages."
                  : "There is no program here that opens this:\r\n" + target) +
              "\r\n\r\nPlease choose one in the settings of your desktop.\r\n",
          std::string(appTitle) + " - Nothing to Open With"};
}

}  // namespace velmora
