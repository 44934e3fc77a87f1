#pragma once

#include <string>

namespace velmora {

/// A message to be written on in a mail program. All texts are UTF-8.
struct MailDraft {
  std::string to;       ///< one bare address, blank for none
  std::string subject;  ///< one line
  std::string body;     ///< lines that end with CR LF

  bool operator==(const MailDraft&) const = default;
};

/// What the desktop's portal for mail made of a draft.
enum class PortalAnswer {
  Taken,
  Cancelled,  ///< by the user
  NotThere,   ///< there is none, or it could not
};

}  // namespace velmora
