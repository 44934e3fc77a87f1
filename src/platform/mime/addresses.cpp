#include "platform/mime/addresses.h"

#include <gmime/gmime.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

#include "platform/mime/address_list.h"
#include "platform/mime/bare_address.h"
#include "platform/mime/encoded_words.h"
#include "platform/mime/glib_ptr.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

/// The library's parser takes quadratic time for some texts, and a call of its own for each group in a group.
constexpr std::size_t MaxAddress = 1000;

/// What the library needs for a byte of an address, as bytes of other work.
constexpr std::size_t addressWork = 64;

constexpr std::string_view Specials = "()<>@,;:\\\".[]=?";
/// Stands for an encoded word where it must be part of no address.
constexpr std::string_view Placeholder = "\uFFFC";

constexpr std::string_view DisguiseLead = "\xEE\x80";  // U+E000 and the 63 characters after it

/// A character for private use that stands in for a special one: no two of them have the same last six bits.
std::string disguised(char special) { return std::string(DisguiseLead) + static_cast<char>(0x80 | (special & 0x3F)); }

/// A comma or bracket inside an encoded word is part of a name and ends no address.
std::string disguise(std::string_view text) {
  std::string hidden;
  for (const char c : text) hidden += Specials.find(c) == Specials.npos ? std::string(1, c) : disguised(c);
  return hidden;
}

std::string reveal(std::string text) {
  if (text.find(DisguiseLead) == std::string::npos) return text;
  for (const char c : Specials) text = text::replaceAll(text, disguised(c), std::string(1, c));
  return text;
}

/// Decoded, with the special characters of encoded words disguised, so that the grammar is that of the text around. A
/// NUL would end the text for the library.
std::string disguisedText(Reading& reading, std::string_view value) {
  std::string text;
  for (const Run& run : decodedRuns(reading, value)) text += run.Encoded ? disguise(run.Text) : run.Text;
  std::ranges::replace(text, '\0', ' ');
  return text::replaceAll(text, "=?", "=" + disguised('?'));
}

std::string textOf(const char* text) { return text ? text : ""; }

std::string display(InternetAddressList* list);

std::string display(InternetAddress* address) {
  const std::string name = textOf(internet_address_get_name(address));
  if (INTERNET_ADDRESS_IS_GROUP(address)) {
    const std::string members = display(internet_address_group_get_members(INTERNET_ADDRESS_GROUP(address)));
    return members.empty() ? name + ":" : name + ": " + members;
  }
  const std::string mailbox = textOf(internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(address)));
  return name.empty() ? mailbox : name + " <" + mailbox + ">";
}

std::string display(InternetAddressList* list) {
  std::string text;
  for (int i = 0; i < internet_address_list_length(list); ++i)
    text += (i > 0 ? ", " : "") + display(internet_address_list_get_address(list, i));
  return text;
}

/// Without blanks and what the grammar may take away, in an order that doesn't depend on where anything stood.
std::string sortedContent(std::string_view text) {
  constexpr std::string_view grammar = " \t\"\\<>():;,";
  std::string content;
  std::ranges::copy_if(text, std::back_inserter(content), [&](char c) { return grammar.find(c) == grammar.npos; });
  std::ranges::sort(content);
  return content;
}

/// The library stops where it understands no further, and takes what it has for all. A sender could make his own
/// address vanish behind another so: its form counts only where nothing of the piece is missing.
std::string displayAddress(std::string_view piece) {
  if (piece.size() > MaxAddress) return std::string(piece);
  const ObjectPtr<InternetAddressList> list(internet_address_list_parse(nullptr, std::string(piece).c_str()));
  const std::string text = list ? display(list.get()) : "";
  const bool isWhole = !text.empty() && std::ranges::includes(sortedContent(text), sortedContent(piece));
  return isWhole ? text : std::string(piece);
}

}  // namespace

std::string displayAddresses(Reading& reading, std::string_view value) {
  const std::string list = disguisedText(reading, value);
  std::string text;
  for (const auto& [begin, size] : splitList(maskList(list).Text)) {
    const std::string_view address = text::trim(std::string_view(list).substr(begin, size));
    if (address.empty()) continue;
    reading.worked(addressWork * address.size());
    if (!text.empty()) text += ", ";
    text += displayAddress(address);
  }
  return reveal(text);
}

std::string senderAddress(Reading& reading, std::string_view value) {
  std::string list;
  for (const Run& run : decodedRuns(reading, value)) list += run.Encoded ? Placeholder : run.Text;
  reading.worked(list.size());
  return lastBareAddress(list);
}

}  // namespace velmora::mime
