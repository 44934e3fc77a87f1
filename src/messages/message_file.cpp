#include "messages/message_file.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr std::string_view lineEnd = "\r\n";

/// Control characters are no part of a name on any system.
bool isOutOfPlace(char c) {
  constexpr std::string_view removed = "/?<>\\:*|\"[],;";
  const auto code = static_cast<unsigned char>(c);
  return removed.find(c) != std::string_view::npos || code < 0x20 || code == 0x7F;
}

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
  return name;
}

bool isHarmlessFileName(std::string_view name) { return !name.empty() && !name.starts_with('.'); }

}  // namespace velmora
