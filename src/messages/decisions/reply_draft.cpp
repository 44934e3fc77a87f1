#include "messages/decisions/reply_draft.h"

#include "platform/text.h"

namespace velmora {

namespace {

constexpr const char* lineEnd = "\r\n";

/// A date that can't be read back stands as it is.
std::string sentText(const std::string& date, const DateNames& names) {
  const auto moment = parseDisplayDate(date, names);
  return moment ? formatDateTime(*moment, "dddd, mmmm d, yyyy at h:mm AM/PM", names) : date;
}

std::string quoted(const std::string& body) { return text::replaceAll(lineEnd + body, lineEnd, "\r\n>"); }

}  // namespace

MailDraft replyDraft(const MailMessage& message, const DateNames& names) {
  std::string text = lineEnd;
  text.append("-----Original Message-----").append(lineEnd);
  text.append("From: ").append(message.From).append(lineEnd);
  text.append("To: ").append(message.To).append(lineEnd);
  text.append("Sent: ").append(sentText(message.Date, names)).append(lineEnd);
  text.append("Subject: ").append(message.Subject).append(lineEnd).append(lineEnd);
  text.append(quoted(message.Body));
  return {.to = message.Sender, .subject = "Re: " + message.Subject, .body = text};
}

}  // namespace velmora
