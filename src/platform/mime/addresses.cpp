#include "platform/mime/addresses.h"

#include <algorithm>
#include <cstddef>

#include "platform/mime/address_list.h"
#include "platform/mime/bare_address.h"
#include "platform/mime/encoded_words.h"

namespace velmora::mime {

namespace {

/// Stands for an encoded word where it must be part of no address.
constexpr std::string_view Placeholder = "\uFFFC";

constexpr std::string_view Blanks = " \t";

bool isBlank(std::string_view text) { return text.find_first_not_of(Blanks) == text.npos; }

/// A stretch of a list, byte for byte the same in three forms.
struct Stretch {
  std::string_view Text;    ///< decoded
  std::string_view Plain;   ///< with an "x" for each byte of encoded words, which are names and no grammar
  std::string_view Masked;  ///< as `maskList` makes it of that

  Stretch from(std::size_t begin, std::size_t size = std::string_view::npos) const {
    return {Text.substr(begin, size), Plain.substr(begin, size), Masked.substr(begin, size)};
  }

  Stretch trimmed() const {
    const auto begin = std::min(Plain.find_first_not_of(Blanks), Plain.size());
    return from(begin, Plain.find_last_not_of(Blanks) + 1 - begin);
  }
};

/// Without quotation marks and what they call for, and with one blank for several.
std::string nameIn(const Stretch& phrase) {
  std::string name;
  bool isQuoted = false;
  for (std::size_t i = 0; i < phrase.Plain.size(); ++i) {
    const char c = phrase.Plain[i];
    const bool isBlank = !isQuoted && Blanks.find(c) != Blanks.npos;
    if (c == '"') {
      isQuoted = !isQuoted;
    } else if (c == '\\' && i + 1 < phrase.Plain.size()) {
      if (!isQuoted) name += c;
      name += phrase.Text[++i];
    } else if (!isBlank || !name.ends_with(' ')) {
      name += isBlank ? ' ' : phrase.Text[i];
    }
  }
  name.erase(name.find_last_not_of(' ') + 1);
  return name.erase(0, name.find_first_not_of(' '));
}

/// What a comment says; blank where the text isn't one comment.
std::string_view commentIn(const Stretch& text) {
  const std::string_view plain = text.Plain;
  if (!plain.starts_with('(') || plain.find('\\') != plain.npos) return {};
  std::size_t depth = 1;
  std::size_t end = 1;
  for (; end < plain.size() && depth > 0; ++end) {
    if (plain[end] == '(') ++depth;
    if (plain[end] == ')') --depth;
  }
  if (depth > 0 || end != plain.size()) return {};
  return text.from(1, end - 2).trimmed().Text;
}

/// Old programs write the name as a comment behind the address.
std::string withName(std::string_view address, const Stretch& comment) {
  const std::string_view name = commentIn(comment);
  if (name.empty()) return {};
  return std::string(name).append(" <").append(address).append(">");
}

std::string displayBare(const Stretch& mailbox) {
  const std::string_view address = mailbox.Text.substr(0, mailbox.Masked.find_first_of(Blanks));
  const Stretch rest = mailbox.from(address.size());
  const bool isAddress = address.find('@') != address.npos && isBlank(rest.Masked);
  const std::string text = isAddress ? withName(address, rest.trimmed()) : "";
  return text.empty() ? std::string(mailbox.Text) : text;
}

/// Blank where what stands behind the brackets is neither the name nor stands behind one.
std::string joined(const std::string& name, std::string_view address, const Stretch& behind) {
  if (name.empty()) return behind.Text.empty() ? std::string(address) : withName(address, behind);
  const std::string text = name + " <" + std::string(address) + ">";
  return behind.Text.empty() ? text : text + " " + std::string(behind.Text);
}

std::string displayMailbox(const Stretch& mailbox) {
  const std::string_view masked = mailbox.Masked;
  const auto open = masked.find_first_of("<>");
  if (open == masked.npos) return displayBare(mailbox);
  const auto close = std::min(masked.find_first_of("<>", open + 1), masked.size());
  const Stretch address = mailbox.from(open + 1, close - open - 1).trimmed();
  const Stretch behind = mailbox.from(std::min(close + 1, masked.size())).trimmed();
  const bool isClosed = close < masked.size() && masked[close] == '>';
  const bool isOnlyLeftOpen = close == masked.size() && address.Masked.find('@') != masked.npos &&
                              address.Masked.find_first_of(" \t,;") == masked.npos;
  if (masked[open] == '>' || address.Text.empty() || !isBlank(behind.Masked) || !(isClosed || isOnlyLeftOpen))
    return std::string(mailbox.Text);

  const std::string text = joined(nameIn(mailbox.from(0, open)), address.Text, behind);
  return text.empty() ? std::string(mailbox.Text) : text;
}

/// A mailbox, or the beginning of a group with its first one.
std::string display(const Stretch& piece) {
  const auto colon = piece.Masked.find(':');
  const std::string group = colon < piece.Masked.find_first_of("<@") ? nameIn(piece.from(0, colon)) : std::string();
  if (group.empty()) return displayMailbox(piece);
  const Stretch first = piece.from(colon + 1).trimmed();
  return first.Text.empty() ? group + ":" : group + ": " + displayMailbox(first);
}

}  // namespace

std::string displayAddresses(Reading& reading, std::string_view value) {
  std::string decoded;
  std::string plain;
  for (const Run& run : decodedRuns(reading, value)) {
    decoded += run.Text;
    plain += run.Encoded ? std::string(run.Text.size(), 'x') : run.Text;
  }
  const MaskedList masked = maskList(plain);
  const Stretch list{decoded, plain, masked.Text};
  reading.worked(decoded.size());

  std::string text;
  for (const auto& [begin, size] : splitList(masked.Text)) {
    const Stretch piece = list.from(begin, size).trimmed();
    if (piece.Text.empty()) continue;
    // A comment alone belongs to what stands before it.
    if (!text.empty()) text += isBlank(piece.Masked) ? " " : ", ";
    text += display(piece);
  }
  return text;
}

std::string senderAddress(Reading& reading, std::string_view value) {
  std::string list;
  for (const Run& run : decodedRuns(reading, value)) list += run.Encoded ? Placeholder : run.Text;
  reading.worked(list.size());
  return lastBareAddress(list);
}

}  // namespace velmora::mime
