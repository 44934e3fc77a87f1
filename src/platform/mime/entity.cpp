#include "platform/mime/entity.h"

#include <algorithm>

#include "platform/mail_bounds.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::string_view Blanks = " \t";

/// What looking at one line costs besides its bytes.
constexpr std::size_t lineWork = 16;

/// Takes the first line with its line end off `rest`.
std::string_view takeLine(std::string_view& rest) {
  const auto end = rest.find('\n');
  const std::string_view line = rest.substr(0, end == std::string_view::npos ? end : end + 1);
  rest.remove_prefix(line.size());
  return line;
}

std::string_view withoutLineEnd(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::string_view trimmed(std::string_view text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

/// The name of the field that the line begins, blank where it begins none.
std::string_view fieldName(std::string_view line) {
  const auto isNameCharacter = [](char c) { return c > ' ' && c < 0x7F && c != ':'; };
  const auto end = std::find_if_not(line.begin(), line.end(), isNameCharacter);
  const auto size = static_cast<std::size_t>(end - line.begin());
  const auto colon = line.find_first_not_of(Blanks, size);
  return colon != std::string_view::npos && line[colon] == ':' ? line.substr(0, size) : std::string_view{};
}

bool isContinuation(std::string_view line) { return line.starts_with(' ') || line.starts_with('\t'); }

/// The line before the header that mailbox files put in front of each message.
bool isEnvelope(std::string_view line) { return line.starts_with("From ") || line.starts_with(">From "); }

/// The first line after `at` that begins with two dashes.
std::size_t nextDashes(Reading& reading, std::string_view content, std::size_t at) {
  constexpr std::string_view dashes = "\n--";
  for (; at < content.size(); at += Reading::slice) {
    // The slices overlap, so that no line is missed where they meet.
    const auto found = content.substr(at, Reading::slice + dashes.size() - 1).find(dashes);
    reading.worked(std::min(found, Reading::slice) + lineWork);
    if (found != std::string_view::npos) return at + found + 1;
  }
  return std::string_view::npos;
}

bool isFieldNext(std::string_view rest) { return !fieldName(takeLine(rest)).empty(); }

}  // namespace

Entity splitEntity(Reading& reading, std::string_view bytes) {
  std::string_view rest = bytes;
  std::size_t headerSize = 0;
  std::size_t fields = 0;
  while (!rest.empty()) {
    const std::string_view before = rest;
    const std::string_view line = takeLine(rest);
    reading.worked(line.size() + lineWork);
    const auto header = [&] { return withoutLineEnd(bytes.substr(0, headerSize)); };
    if (withoutLineEnd(line).empty()) return {header(), rest};
    const bool isField = !fieldName(line).empty();
    const bool belongs = isField || (headerSize > 0 && isContinuation(line)) || isFieldNext(rest) ||
                         (headerSize == 0 && isEnvelope(line));
    if (!belongs || (isField && fields++ == mail_bounds::fields)) return {header(), before};
    headerSize += line.size();
  }
  return {withoutLineEnd(bytes), {}};
}

std::vector<Field> fieldsOf(Reading& reading, std::string_view header) {
  std::vector<Field> fields;
  std::string_view rest = header;
  while (!rest.empty()) {
    const std::string_view line = takeLine(rest);
    reading.worked(line.size() + lineWork);
    const std::string_view name = isContinuation(line) ? std::string_view{} : fieldName(line);
    if (!name.empty()) {
      const std::string_view value = line.substr(line.find(':', name.size()) + 1);
      fields.push_back({name, value});
    } else if (!fields.empty()) {
      std::string_view& value = fields.back().Value;
      value = {value.data(), value.size() + line.size()};
    }
  }
  for (Field& field : fields) field.Value = trimmed(field.Value);
  return fields;
}

std::string_view valueOf(const std::vector<Field>& fields, std::string_view name) {
  const auto hasName = [name](const Field& field) { return text::equalsIgnoringCase(field.Name, name); };
  const auto found = std::find_if(fields.begin(), fields.end(), hasName);
  return found == fields.end() ? std::string_view{} : found->Value;
}

std::string unfold(std::string_view value, std::size_t maxBytes) {
  std::string line(value.substr(0, maxBytes));
  std::erase_if(line, [](char c) { return c == '\r' || c == '\n'; });
  std::replace(line.begin(), line.end(), '\0', ' ');
  return line;
}

std::string lineOf(const std::vector<Field>& fields, std::string_view name) {
  constexpr std::size_t most = std::size_t{16} * 1024;
  return unfold(valueOf(fields, name), most);
}

std::vector<std::string_view> splitMultipart(Reading& reading, std::string_view content, std::string_view boundary,
                                             std::size_t maxParts) {
  std::vector<std::string_view> parts;
  auto partBegin = std::string_view::npos;
  const auto endPart = [&](std::size_t end) {
    if (partBegin < end) parts.push_back(withoutLineEnd(content.substr(partBegin, end - partBegin)));
    if (partBegin == end) parts.emplace_back();
  };
  for (std::size_t at = content.starts_with("--") ? 0 : nextDashes(reading, content, 0);
       at < content.size() && parts.size() + 1 < maxParts; at = nextDashes(reading, content, at)) {
    std::string_view rest = content.substr(at);
    const std::string_view line = takeLine(rest);
    if (!line.substr(2).starts_with(boundary)) continue;
    const std::string_view after = trimmed(line.substr(2 + boundary.size()));
    if (!after.empty() && after != "--") continue;
    endPart(at);
    if (after == "--") return parts;
    partBegin = content.size() - rest.size();
  }
  endPart(content.size());
  return parts;
}

}  // namespace velmora::mime
