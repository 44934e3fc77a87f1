#include "app/decisions/status_panels.h"

#include <algorithm>

#include "checking/decisions/schedule.h"

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

constexpr std::string_view momentPattern = "mmmm dd, yyyy at h:mm AM/PM";

std::string noun(std::int16_t count) { return count < 2 ? " Message" : " Messages"; }

bool showsAttachments(const AttachmentCounts& list) {
  return list.ListAttachCount > 0 || list.ListDeleteAttachCount > 0 || list.ListNewAttachCount > 0;
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

std::string clockText(const DateTime& now, const DateNames& months) {
  return formatDateTime(now, "mmm d/yy h:mm AM/PM", months);
}

std::string countTip(const Accounts::Row& account, const AttachmentCounts& list, const std::string& text) {
  if (account.AcntSpamCount > 0) return text + noun(account.AcntSpamCount) + " Marked as Spam";
  if (account.AcntDeleteCount > 0) return text + noun(account.AcntDeleteCount) + " for Deletion";
  if (account.AcntMsgCount > 0 && showsAttachments(list)) {
    return text + noun(account.AcntMsgCount) + " with an Attachment";
  }
  if (account.AcntNewCount > 0) return text + " New" + noun(account.AcntNewCount);
  if (text.empty()) return text;
  return text + (account.AcntMsgCount == 1 ? " Message" : " Messages");
}

std::string lastCheckTip(const std::string& text, const DateTime& now, const DateNames& months) {
  constexpr std::string_view checkedAt = "Checked at:";
  if (!text.starts_with(checkedAt)) return text;
  const auto moment = parseGeneralDate(formatDateTime(now, "m/d/yyyy") + text.substr(checkedAt.size()));
  return moment ? "Last Check: " + formatDateTime(*moment, momentPattern, months) : text;
}

std::string nextCheckTip(const std::string& text, std::string nextCheckTime, const DateNames& months) {
  if (text == autoCheckWaits || text == startUpCheckWaits) return "The check waits for the network";
  if (text.starts_with("Retrieving")) return text;
  if (!text.starts_with("Auto Check at")) return "Auto Check is Off";
  std::replace(nextCheckTime.begin(), nextCheckTime.end(), '-', ' ');
  const auto moment = parseDayFirst(nextCheckTime);
  return moment ? "Next Auto Check: " + formatDateTime(*moment, momentPattern, months) : text;
}

std::string clockTip(const DateTime& now, const DateNames& months) {
  return "Current: " + formatDateTime(now, "mmmm dd, yyyy h:mm AM/PM", months);
}

}  // namespace velmora
