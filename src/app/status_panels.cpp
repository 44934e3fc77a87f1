#include "app/status_panels.h"

namespace velmora {

namespace {

CountPanel shown(std::int16_t count, std::string_view picture) { return {std::to_string(count), picture}; }

CountPanel forNewMessages(const Accounts::Row& account, const AttachmentCounts& list) {
  if (account.AcntSpamCount > 0) return shown(account.AcntSpamCount, "SpamNew");
  if (account.AcntDeleteCount > 0 && list.ListDeleteAttachCount > 0) {
    return shown(list.ListDeleteAttachCount, "DeleteAttach");
  }
  if (list.ListNewAttachCount > 0) return shown(list.ListNewAttachCount, "AttachNew");
  return shown(account.AcntNewCount, "New");
}

bool holdsNoCount(const Accounts::Row& account) {
  return account.AcntStatusText == account.AcntName + " - User Stopped Retrieval" ||
         account.AcntLastCheckText == "Not Checked";
}

}  // namespace

CountPanel countPanel(const Accounts::Row& account, const AttachmentCounts& list) {
  if (account.AcntNewCount > 0) return forNewMessages(account, list);
  if (account.AcntSpamCount > 0) return shown(account.AcntSpamCount, "Spam");
  if (account.AcntDeleteCount > 0) {
    return list.ListDeleteAttachCount > 0 ? shown(list.ListDeleteAttachCount, "DeleteAttach")
                                          : shown(account.AcntDeleteCount, "Delete");
  }
  if (list.ListAttachCount > 0) return shown(list.ListAttachCount, "Attach");
  return holdsNoCount(account) ? CountPanel{} : shown(account.AcntMsgCount, "Normal");
}

std::string clockText(const DateTime& now, const MonthNames& months) {
  return formatDateTime(now, "mmm d/yy h:mm AM/PM", months);
}

}  // namespace velmora
