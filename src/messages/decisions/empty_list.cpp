#include "messages/decisions/empty_list.h"

namespace velmora {

std::string emptyListText(const Accounts::Row& account) {
  if (!account.AcntChecked) return "This account has not been checked yet.\nPress Check to see what waits there.";
  if (!account.AcntConnected) return "The last check did not bring in any messages.\nPress Check to try again.";
  return "No messages wait on the server.";
}

}  // namespace velmora
