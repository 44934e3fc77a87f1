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
constexpr std::string_view secretVerb = "PASS";
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

/// The familiar words, and the numbers at the front, where they may be told: a count and bytes.
std::string familiarWords(std::string_view words, bool withNumbers) {
  std::string told;
  int numbersLeft = withNumbers ? 2 : 0;
  for (auto word = takeWord(words); !word.empty(); word = takeWord(words)) {
    const bool isNumber = numbersLeft > 0 && toCount(word);
    numbersLeft = isNumber ? numbersLeft - 1 : 0;
    const std::string_view piece = isNumber || isFamiliar(word) ? word : leftOut;
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

void ConversationLog::sent(std::string_view command) {
  if (!write_) return;
  ++awaited_;
  if (std::string_view line = command; takeWord(line) == secretVerb) {
    secretSent_ = true;
    secretAnswers_ = awaited_;
  }
  write_("> " + harmless(command));
}

void ConversationLog::answered(const Reply& reply) {
  if (!write_) return;
  const bool answersSecret = secretAnswers_ > 0;
  if (answersSecret) --secretAnswers_;
  if (awaited_ > 0) --awaited_;
  const std::string words = wordsOf(reply, answersSecret);
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

std::string ConversationLog::wordsOf(const Reply& reply, bool answersSecret) const {
  if (isShort_) return {};
  return cleanWords(secretSent_ ? familiarWords(reply.text, reply.ok && !answersSecret) : reply.text, secret_);
}

}  // namespace velmora::pop
