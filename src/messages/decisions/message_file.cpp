#include "messages/decisions/message_file.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/text.h"

namespace velmora {

namespace {

constexpr std::string_view lineEnd = "\r\n";

/// Control characters are no part of a name on any system.
bool isOutOfPlace(char c) {
  constexpr std::string_view removed = "/?<>\\:*|\"[],;";
  const auto code = static_cast<unsigned char>(c);
  return removed.find(c) != std::string_view::npos || code < 0x20 || code == 0x7F;
}

// NOLINTBEGIN(misc-misleading-bidirectional): as escapes they mislead nobody
/// Characters that turn the direction of writing, in which a name may hide what it ends in.
constexpr std::array directions = {"\u202A", "\u202B", "\u202C", "\u202D", "\u202E",
                                   "\u2066", "\u2067", "\u2068", "\u2069"};
// NOLINTEND(misc-misleading-bidirectional)

/// Leaves room for an ending in the 255 bytes that a name may have.
constexpr std::size_t mostBytes = 200;

}  // namespace

std::string rawText(const MailMessage& message) {
  std::string text;
  text.reserve(message.Raw.size() + message.Body.size() + 3 * lineEnd.size());
  return text.append(message.Raw).append(lineEnd).append(lineEnd).append(message.Body);
}

std::string messageFileText(const MailMessage& message) { return rawText(message).append(lineEnd); }

std::string proposedFileName(std::string_view subject) {
  std::string name(subject);
  name.erase(std::remove_if(name.begin(), name.end(), isOutOfPlace), name.end());
  for (const auto* direction : directions) name = text::replaceAll(name, direction, "");
  return std::string(text::leftBytes(name, mostBytes));
}

}  // namespace velmora
