#include "platform/pop/reply_reader.h"

#include <algorithm>
#include <utility>

#include "platform/failure.h"
#include "platform/mail_bounds.h"
#include "platform/pop/server_words.h"
#include "platform/text.h"

namespace velmora::pop {
namespace {

PopFailure tooLong(std::string_view what) {
  return {pop_failure::protocolBroken, "The server sent " + std::string(what) + " longer than any server may send."};
}

bool startsIgnoringCase(std::string_view line, std::string_view start) {
  return text::equalsIgnoringCase(line.substr(0, start.size()), start);
}

/// Behind the first byte. Most of what is long has far more lines than dots.
std::size_t nextDottedLine(std::string_view text) {
  std::size_t dot = text.find('.', 1);
  while (dot != std::string_view::npos && text[dot - 1] != '\n') dot = text.find('.', dot + 1);
  return dot;
}

std::string_view withoutReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace

std::string ReplyReader::quote(std::string_view what, std::string_view words) const {
  return withServerWords(what, words, secret_);
}

Reply ReplyReader::parseStatus(std::string_view line) const {
  constexpr std::string_view good = "+OK";
  constexpr std::string_view bad = "-ERR";
  if (startsIgnoringCase(line, good)) return {true, std::string(text::trim(line.substr(good.size())))};
  if (startsIgnoringCase(line, bad)) return {false, std::string(text::trim(line.substr(bad.size())))};
  throw PopFailure(pop_failure::protocolBroken, quote("The server's answer breaks the protocol.", line));
}

void ReplyReader::feed(std::string_view bytes) {
  buffer_.erase(0, position_);
  position_ = 0;
  buffer_.append(bytes);
}

std::optional<std::string_view> ReplyReader::line(std::size_t maximum) {
  const std::string_view rest = pending();
  const std::size_t end = rest.substr(0, maximum + 1).find('\n');
  if (end == std::string_view::npos) {
    if (rest.size() > maximum) throw tooLong("a line");
    return std::nullopt;
  }
  return rest.substr(0, end);
}

void ReplyReader::skipBlankLines() {
  const std::string_view rest = pending();
  const std::size_t blanks = std::min(rest.find_first_not_of(" \t\r\n"), rest.size());
  position_ += blanks;
  blankBytes_ += blanks;
  if (blankBytes_ > maximumStatusLine) throw tooLong("a line");
}

std::optional<Reply> ReplyReader::status() {
  skipBlankLines();
  const std::string_view rest = pending();
  if (!rest.empty() && rest.front() != '+' && rest.front() != '-') {
    // Half a line may end within the secret, and then isn't to be quoted.
    const auto end = rest.find('\n');
    parseStatus(end == std::string_view::npos ? std::string_view() : rest.substr(0, end));
  }
  const auto complete = line(maximumStatusLine);
  if (!complete) return std::nullopt;
  Reply reply = parseStatus(withoutReturn(*complete));
  position_ += complete->size() + 1;
  blankBytes_ = 0;
  return reply;
}

bool ReplyReader::lines(const std::function<void(std::string_view)>& each) {
  while (const auto complete = line(maximumListLine)) {
    position_ += complete->size() + 1;
    std::string_view text = withoutReturn(*complete);
    if (text == ".") {
      listLines_ = listBytes_ = 0;
      return true;
    }
    listBytes_ += text.size();
    if (++listLines_ > maximumListLines || listBytes_ > maximumListing) throw tooLong("a listing");
    if (text.starts_with('.')) text.remove_prefix(1);
    each(text);
  }
  return false;
}

bool ReplyReader::message(const Take& take) {
  while (position_ < buffer_.size()) {
    const LineStart start = atLineStart_ ? lineStart() : LineStart::Text;
    if (start == LineStart::Incomplete) return false;
    if (start == LineStart::End) {
      messageBytes_ = 0;
      return true;
    }
    take(messageLines());
  }
  return false;
}

std::optional<Delivery> ReplyReader::message() {
  std::int64_t bytes = messageBytes_;
  const bool isWhole = message([&](std::string_view lines) {
    messageText_.append(lines.substr(0, mail_bounds::message - messageText_.size()));
    bytes = messageBytes_;
  });
  if (!isWhole) return std::nullopt;
  return Delivery{std::exchange(messageText_, {}), bytes};
}

ReplyReader::LineStart ReplyReader::lineStart() {
  const std::string_view rest = pending().substr(0, 3);
  if (rest.front() != '.') return LineStart::Text;
  if (rest == "." || rest == ".\r") return LineStart::Incomplete;
  if (rest.starts_with(".\n") || rest == ".\r\n") {
    position_ += rest[1] == '\n' ? 2 : 3;
    return LineStart::End;
  }
  ++position_;
  return LineStart::Text;
}

/// All up to the next line that begins with a dot.
std::string_view ReplyReader::messageLines() {
  const std::string_view taken = pending().substr(0, nextDottedLine(pending()));
  atLineStart_ = taken.ends_with('\n');
  position_ += taken.size();
  messageBytes_ += static_cast<std::int64_t>(taken.size());
  if (messageBytes_ > maximumMessage) throw tooLong("a message");
  return taken;
}

}  // namespace velmora::pop
