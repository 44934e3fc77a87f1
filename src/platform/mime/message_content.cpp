#include "platform/mime/message_content.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "platform/mail_bounds.h"
#include "platform/mime/charset.h"
#include "platform/mime/html_text.h"
#include "platform/mime/parts.h"
#include "platform/mime/transfer.h"
#include "platform/mime/utf8.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

/// Pictures stand in some HTML themselves.
constexpr std::size_t MaxHtml = std::size_t{8} << 20U;

/// Gives the text of a part in slices of whole characters, until `take` returns false.
template <class Take>
void decode(Reading& reading, const TextPart& part, Take take) {
  constexpr std::string_view byteOrderMark = "\uFEFF";
  TransferDecoder bytes(part.Content, part.Encoding);
  CharsetDecoder text(reading.converters, part.Charset);
  bool begins = true;
  for (bool ended = false; !ended;) {
    ended = bytes.atEnd();
    const std::string slice = ended ? text.finish() : text.decode(bytes.next(Reading::slice));
    std::string_view rest = slice;
    if (begins && rest.starts_with(byteOrderMark)) rest.remove_prefix(byteOrderMark.size());
    begins = begins && slice.empty();
    if (!take(rest)) return;
    reading.worked(Reading::slice);
  }
}

std::string join(Reading& reading, const std::vector<TextPart>& parts) {
  std::size_t size = 0;
  for (const TextPart& part : parts) size += part.Content.size();
  // A character of one byte may become one of three, and more.
  constexpr std::size_t most = mail_bounds::message + 8 * Reading::slice;
  constexpr std::size_t large = mail_bounds::message / 4;
  LineWriter lines(size > large ? most : 3 * size);
  const auto hasRoom = [&] { return lines.text().size() <= mail_bounds::message; };
  for (const TextPart& part : parts) {
    if (!hasRoom()) break;
    if (!lines.text().empty()) lines.add("\n");
    decode(reading, part, [&](std::string_view text) {
      lines.add(text);
      return hasRoom();
    });
  }
  std::string body = lines.take();
  mail_bounds::cut(body, mail_bounds::message, mail_bounds::bodyMark);
  return body;
}

/// The beginning of it, and whether that is all.
std::pair<std::string, bool> decodeHtml(Reading& reading, const TextPart& part) {
  std::string html;
  decode(reading, part, [&](std::string_view text) {
    html += text;
    return html.size() <= MaxHtml;
  });
  const std::size_t size = text::leftBytes(html, MaxHtml).size();
  const bool isWhole = size == html.size();
  html.resize(size);
  return {std::move(html), isWhole};
}

std::string textOfHtml(Reading& reading, const TextPart& part) {
  const auto [html, isWhole] = decodeHtml(reading, part);
  const std::string text = htmlToText(reading, html);
  LineWriter lines(text.size());
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view slice = text::leftBytes(rest, Reading::slice);
    lines.add(slice);
    reading.worked(slice.size());
    rest.remove_prefix(slice.size());
  }
  return lines.take().append(isWhole ? "" : mail_bounds::bodyMark);
}

/// The plain part of some HTML mail holds nothing but line breaks, or blanks of any kind.
bool isBlank(Reading& reading, std::string_view text) {
  constexpr std::array<std::string_view, 9> blanks = {" ",      "\t",     "\r",     "\n",    "\u00A0",
                                                      "\u200B", "\u200C", "\u200D", "\uFEFF"};
  while (!text.empty()) {
    const auto found = std::find_if(blanks.begin(), blanks.end(), [&](auto blank) { return text.starts_with(blank); });
    if (found == blanks.end()) return false;
    text.remove_prefix(found->size());
    reading.worked(found->size());
  }
  return true;
}

std::string bodyOf(Reading& reading, const Parts& parts) {
  std::string plain = join(reading, parts.Plain);
  if (!isBlank(reading, plain)) return plain;
  if (!parts.Html.empty()) return textOfHtml(reading, parts.Html.front());
  return plain.empty() ? join(reading, parts.OtherText) : plain;
}

/// How many parts bear an identifier.
using PartsById = std::unordered_map<std::string, std::size_t>;

/// Takes those that the HTML shows off `parts`. That holds what parts there are, and not what a stranger's HTML asks
/// for, which may be far more.
void removeShown(std::string_view html, PartsById& parts) {
  for (auto colon = html.find(':'); colon != std::string_view::npos; colon = html.find(':', colon + 1)) {
    if (!text::endsWithIgnoringCase(html.substr(0, colon), "cid")) continue;
    const auto end = std::min(html.find_first_of("\"'<> \t\r\n)", colon), html.size());
    parts.erase(decodePercent(html.substr(colon + 1, end - colon - 1)));
    colon = end;
  }
}

std::size_t countUnreferenced(Reading& reading, const Parts& parts) {
  PartsById left;
  std::size_t count = 0;
  for (const std::string& id : parts.NonTextIds) ++(id.empty() ? count : left[id]);
  for (const TextPart& html : parts.Html) {
    if (left.empty()) break;
    removeShown(decodeHtml(reading, html).first, left);
  }
  for (const auto& [id, bearers] : left) count += bearers;
  return count;
}

}  // namespace

MessageContent readContent(Reading& reading, const Entity& message) {
  constexpr std::size_t most = std::numeric_limits<std::int16_t>::max();
  const Parts parts = partsOf(reading, message);
  const std::size_t attachments = std::min(parts.Attached + countUnreferenced(reading, parts), most);
  return {.Body = bodyOf(reading, parts), .Attachments = static_cast<std::int16_t>(attachments)};
}

}  // namespace velmora::mime
