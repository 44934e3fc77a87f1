#include "platform/mime/message_content.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <limits>
#include <set>

#include "platform/mime/charset.h"
#include "platform/mime/parts.h"
#include "platform/mime/transfer.h"
#include "platform/mime/utf8.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::size_t MaxBody = std::size_t{64} * 1024 * 1024;
constexpr std::size_t MaxHtml = std::size_t{1024} * 1024;

/// At most about `maxBytes`. Three encoded bytes may make one.
std::string decode(const TextPart& part, std::size_t maxBytes) {
  const std::string bytes = decodeTransfer(part.Content.substr(0, 3 * maxBytes), part.Encoding);
  std::string text = toUtf8(std::string_view(bytes).substr(0, maxBytes), part.Charset);
  if (text.starts_with("\uFEFF")) text.erase(0, 3);
  return text;
}

std::string join(const std::vector<TextPart>& parts) {
  std::string text;
  for (const TextPart& part : parts) {
    if (text.size() >= MaxBody) break;
    if (!text.empty()) text += "\r\n";
    text += linesOf(decode(part, MaxBody), MaxBody - text.size());
  }
  return text;
}

std::string decodeHtml(const TextPart& part) {
  std::string html = decode(part, MaxHtml);
  html.resize(cut(html, MaxHtml).size());
  return html;
}

/// The plain part of some HTML mail holds nothing but line breaks.
bool isBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

std::string bodyOf(const Parts& parts, const HtmlToText& htmlToText) {
  std::string plain = join(parts.Plain);
  if (!isBlank(plain)) return plain;
  if (!parts.Html.empty()) return linesOf(toUtf8(htmlToText(decodeHtml(parts.Html.front()))), MaxBody);
  return plain.empty() ? join(parts.OtherText) : plain;
}

std::string percentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string digits(text.substr(i + 1, 2));
    const bool escaped = text[i] == '%' && digits.size() == 2 && std::isxdigit(static_cast<unsigned char>(digits[0])) &&
                         std::isxdigit(static_cast<unsigned char>(digits[1]));
    decoded += escaped ? static_cast<char>(std::stoi(digits, nullptr, 16)) : text[i];
    if (escaped) i += 2;
  }
  return decoded;
}

void addReferences(std::string_view html, std::set<std::string, std::less<>>& references) {
  for (auto colon = html.find(':'); colon != std::string_view::npos; colon = html.find(':', colon + 1)) {
    if (!text::endsWithIgnoringCase(html.substr(0, colon), "cid")) continue;
    const auto end = std::min(html.find_first_of("\"'<> \t\r\n)", colon), html.size());
    references.insert(percentDecoded(html.substr(colon + 1, end - colon - 1)));
    colon = end;
  }
}

std::size_t countUnreferenced(const Parts& parts) {
  const auto& ids = parts.NonTextIds;
  if (std::all_of(ids.begin(), ids.end(), [](const std::string& id) { return id.empty(); })) return ids.size();
  std::set<std::string, std::less<>> references;
  for (const TextPart& html : parts.Html) addReferences(decodeHtml(html), references);
  const auto referenced = [&](const std::string& id) { return !id.empty() && references.contains(id); };
  return ids.size() - static_cast<std::size_t>(std::count_if(ids.begin(), ids.end(), referenced));
}

}  // namespace

MessageContent readContent(const Entity& message, const HtmlToText& htmlToText) {
  constexpr std::size_t most = std::numeric_limits<std::int16_t>::max();
  const Parts parts = partsOf(message);
  const std::size_t attachments = std::min(parts.Attached + countUnreferenced(parts), most);
  return {.Body = bodyOf(parts, htmlToText), .Attachments = static_cast<std::int16_t>(attachments)};
}

}  // namespace velmora::mime
