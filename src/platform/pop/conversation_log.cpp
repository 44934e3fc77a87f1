#include "platform/pop/conversation_log.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/ascii.h"
#include "platform/pop/fields.h"
#include "platform/pop/server_words.h"
#include "platform/text.h"

namespace velmora::pop {
namespace {

constexpr std::string_view hidden = "***";
constexpr std::string_view leftOut = "...";
constexpr std::string_view loginVerb = "USER";

/// Commands whose argument is a number or two of a listing.
constexpr auto numbering = std::to_array<std::string_view>({"DELE", "LIST", "RETR", "TOP", "UIDL"});

/// What servers say, each word between blanks. The codes are those of RFC 2449 and RFC 3206.
constexpr std::string_view familiar =
    " "
    "[auth] [in-use] [login-delay] [sys/perm] [sys/temp] a access account again already an and application "
    "are at authentication authorization be blocked busy bye can't cannot closed closing command connection "
    "connections credentials database deleted denied disabled disk enabled error exceeded exist expired "
    "failed failure first follow follows for found full goodbye has header in incorrect internal invalid is "
    "later limit listing lock locked logged logging login mail mailbox maildrop maintenance many marked "
    "message messages method no not octets of off open out password permanent permission please quota ready "
    "refused rejected required server service session specific such system temporarily temporary the timeout "
    "to too try unable unavailable unknown use user username welcome wrong you your ";

bool isFamiliar(std::string_view word) {
  std::string low = " " + std::string(word.substr(0, word.find_last_not_of(".,:;!") + 1)) + " ";
  std::ranges::transform(low, low.begin(), ascii::lower);
  return familiar.find(low) != std::string_view::npos;
}

std::string familiarWords(std::string_view words) {
  std::string told;
  for (auto word = takeWord(words); !word.empty(); word = takeWord(words)) {
    const std::string_view piece = isFamiliar(word) ? word : leftOut;
    if (piece == leftOut && told.ends_with(leftOut)) continue;
    told.append(told.empty() ? "" : " ").append(piece);
  }
  return told;
}

}  // namespace

ConversationLog::ConversationLog(LogLine write, std::string_view secret) : write_(std::move(write)) {
  if (!write_) return;
  secret_ = secret;
  const std::string shown = cleanWords(secret, {});
  isShort_ = !shown.empty() && text::length(shown) < shortestStruckOut;
}

void ConversationLog::connecting(const std::string& host, std::uint16_t port, bool secure) const {
  if (!write_) return;
  write_("* connecting to " + own(host) + ":" + std::to_string(port) + (secure ? " with TLS" : " without TLS"));
}

void ConversationLog::connected() const {
  if (write_) write_("* connected");
}

void ConversationLog::sent(std::string_view command) const {
  if (write_) write_("> " + harmless(command));
}

void ConversationLog::answered(const Reply& reply) const {
  if (!write_) return;
  const std::string words = familiarWords(reply.text);
  write_((reply.ok ? "< +OK" : "< -ERR") + (words.empty() ? words : " " + words));
}

void ConversationLog::failed(const PopFailure& failure) const {
  if (!write_) return;
  write_("* failure " + std::to_string(failure.number()) + ": " + own(withoutServerWords(failure.what())));
}

void ConversationLog::closed() const {
  if (write_) write_("* closed");
}

/// What doesn't come from a server may hold a short secret by chance, and nothing tells where.
std::string ConversationLog::own(std::string_view text) const {
  if (text == secret_ && !text.empty()) return std::string(hidden);
  return cleanWords(text, isShort_ ? std::string_view() : secret_);
}

std::string ConversationLog::harmless(std::string_view command) const {
  std::string_view argument = command;
  const std::string verb(takeWord(argument));
  if (argument.empty() || std::ranges::find(numbering, verb) != numbering.end()) return std::string(command);
  argument.remove_prefix(1);
  return verb + " " + (verb == loginVerb ? own(argument) : std::string(hidden));
}

}  // namespace velmora::pop
