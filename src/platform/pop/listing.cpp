#include "platform/pop/listing.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <optional>
#include <span>
#include <utility>

#include "platform/mail_bounds.h"
#include "platform/pop/exchange.h"
#include "platform/pop/fields.h"
#include "platform/pop/server_words.h"
#include "platform/text.h"

namespace velmora::pop {
namespace {

constexpr std::int64_t maximumNumber = std::numeric_limits<std::int32_t>::max();

/// What each line of a listing says behind the message number, by that number.
using TextByNumber = std::map<std::int32_t, std::string>;

/// Takes all the rest as one: of an identifier that holds a blank, though none should (RFC 1939 section 7), a part may
/// be that of other messages too.
std::string_view takeRest(std::string_view line) {
  constexpr std::string_view blanks = " \t";
  line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
  return line.substr(0, line.find_last_not_of(blanks) + 1);
}

/// Some servers begin each line as if it were a status line.
std::string_view withoutStatusWord(std::string_view line) {
  constexpr std::string_view good = "+OK ";
  return text::equalsIgnoringCase(line.substr(0, good.size()), good) ? line.substr(good.size()) : line;
}

void readLine(std::string_view line, TextByNumber& texts) {
  if (line.find_first_not_of(" \t") == std::string_view::npos) return;
  line = withoutStatusWord(line);
  const std::optional<std::int64_t> number = toCount(takeWord(line));
  if (!number || *number < 1 || *number > maximumNumber)
    throw PopFailure(pop_failure::protocolBroken, "The server sent a listing that can't be read.");
  texts.insert_or_assign(static_cast<std::int32_t>(*number), takeRest(line));
}

std::optional<std::int64_t> sizeIn(std::string_view text) { return toCount(takeWord(text)); }

std::string textFor(std::int32_t number, const TextByNumber& texts) {
  const auto found = texts.find(number);
  return found == texts.end() ? std::string() : found->second;
}

std::vector<std::int32_t> messageNumbers(std::size_t count, const TextByNumber& sizes) {
  std::vector<std::int32_t> numbers;
  for (const auto& [number, size] : sizes) numbers.push_back(number);
  if (numbers.size() == count) return numbers;
  numbers.resize(count);
  for (std::size_t i = 0; i < count; ++i) numbers[i] = static_cast<std::int32_t>(i + 1);
  return numbers;
}

Listing assemble(std::size_t count, const TextByNumber& sizes, const TextByNumber& uids) {
  Listing listing;
  for (const std::int32_t number : messageNumbers(count, sizes)) {
    const std::int64_t bytes = sizeIn(textFor(number, sizes)).value_or(0);
    listing.push_back({number, std::min(bytes, maximumNumber), textFor(number, uids)});
  }
  return listing;
}

std::vector<std::size_t> withoutIdentifier(const Listing& listing) {
  std::vector<std::size_t> indexes;
  for (std::size_t i = 0; i < listing.size(); ++i)
    if (listing[i].uid.empty()) indexes.push_back(i);
  return indexes;
}

Request headerRequest(const Entry& entry, bool byTop) {
  const std::string number = std::to_string(entry.number);
  return byTop ? Request{"TOP " + number + " 0"} : Request{"RETR " + number, entry.bytes};
}

/// Fills in the identifiers of the entries at `indexes`, and returns the indexes of those that the server refused.
std::vector<std::size_t> readIdentifiers(const Channel& channel, Listing& listing, std::span<const std::size_t> indexes,
                                         bool byTop, const MailReader& reader) {
  std::vector<std::size_t> refused;
  std::vector<Request> requests;
  for (const std::size_t index : indexes) requests.push_back(headerRequest(listing[index], byTop));
  exchange(channel.conversation, requests, channel.pipelined, [&](std::size_t i, const Reply& reply) {
    const std::size_t index = indexes[i];
    if (reply.ok)
      listing[index].uid = identifierFromHeader(channel.conversation.message().text, reader);
    else if (byTop && !isTemporary(reply.text))
      refused.push_back(index);
    else
      throw refusedMessage(channel.conversation, index + 1, listing.size(), reply.text);
  });
  return refused;
}

std::string_view headerOf(std::string_view message) {
  std::size_t start = 0;
  while (start < message.size()) {
    const std::string_view rest = message.substr(start);
    if (rest.starts_with('\n') || rest.starts_with("\r\n")) break;
    const std::size_t end = rest.find('\n');
    start = end == std::string_view::npos ? message.size() : start + end + 1;
  }
  return message.substr(0, start);
}

/// Some servers that announce pipelining mix up their answers, and then sizes would pass for identifiers.
void requireSizes(const TextByNumber& sizes) {
  if (!std::ranges::all_of(sizes, [](const auto& line) { return sizeIn(line.second).has_value(); }))
    throw PopFailure(pop_failure::protocolBroken, "The server sent a listing without sizes.");
}

}  // namespace

std::vector<std::string> listCommands() { return {"LIST", "UIDL"}; }

Listing list(const Channel& channel) {
  channel.conversation.enter(Phase::Listing);
  std::array<TextByNumber, 2> answers;
  std::vector<Request> requests;
  for (const std::string& command : listCommands()) requests.push_back({command});
  exchange(channel.conversation, requests, channel.pipelined, [&](std::size_t index, const Reply& reply) {
    if (reply.ok)
      channel.conversation.lines([&](std::string_view line) { readLine(line, answers.at(index)); });
    else if (isTemporary(reply.text))
      throw PopFailure(pop_failure::messageRefused,
                       channel.conversation.quote("The server refused to list the messages.", reply.text));
  });
  channel.conversation.enter(Phase::Working);
  if (channel.pipelined) requireSizes(answers[0]);
  return assemble(static_cast<std::size_t>(channel.maildrop.count), answers[0], answers[1]);
}

void completeIdentifiers(const Channel& channel, Listing& listing, const MailReader& reader) {
  const std::vector<std::size_t> missing = withoutIdentifier(listing);
  if (missing.empty()) return;
  // A server without TOP should not hear it for every message: some hang up after a few commands they don't know.
  const auto first = std::span(missing).first(1);
  const bool hasTop = readIdentifiers(channel, listing, first, true, reader).empty();
  const auto refused = readIdentifiers(channel, listing, withoutIdentifier(listing), hasTop, reader);
  readIdentifiers(channel, listing, refused, false, reader);
}

std::string identifierFromHeader(std::string_view message, const MailReader& reader) {
  // The blank line that ends a header of just that size has two bytes.
  const std::string_view header = headerOf(message.substr(0, mail_bounds::raw + 2)).substr(0, mail_bounds::raw);
  return header.empty() ? std::string() : "header " + reader.fingerprint(header);
}

PopFailure refusedMessage(const Conversation& conversation, std::size_t position, std::size_t count,
                          std::string_view words) {
  const std::string what =
      "The server refused to hand out message " + std::to_string(position) + " of " + std::to_string(count) + ".";
  return {pop_failure::messageRefused, conversation.quote(what, words)};
}

}  // namespace velmora::pop
