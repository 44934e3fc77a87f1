#include "platform/mime/attachments.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unordered_set>

#include "platform/mime/charset.h"
#include "platform/mime/content_type.h"
#include "platform/mime/encoded_words.h"
#include "platform/mime/part_text.h"
#include "platform/mime/transfer.h"
#include "platform/mime/utf8.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

/// What file systems take.
constexpr std::size_t MaxName = 255;

/// What looking at one place in HTML costs, as bytes of other work.
constexpr std::size_t lookWork = 64;

using Ids = std::unordered_set<std::string_view>;

/// Takes the identifiers of what the HTML shows off `ids`. Those are of the parts that there are, and not what a
/// stranger's HTML asks for, which may be far more.
void removeShown(Reading& reading, std::string_view html, Ids& ids) {
  for (auto colon = html.find(':'); colon != std::string_view::npos; colon = html.find(':', colon + 1)) {
    reading.worked(lookWork);
    if (!text::endsWithIgnoringCase(html.substr(0, colon), "cid")) continue;
    const auto end = std::min(html.find_first_of("\"'<> \t\r\n)", colon), html.size());
    ids.erase(decodePercent(html.substr(colon + 1, end - colon - 1)));
    colon = end;
  }
}

/// Identifiers of pictures that no HTML of the message shows.
Ids unshown(Reading& reading, const Parts& parts) {
  Ids ids;
  for (const Part& part : parts)
    if (part.Is == Role::Picture) ids.insert(part.Id);
  for (const Part& part : parts) {
    if (ids.empty()) break;
    if (part.Is == Role::Html) removeShown(reading, decodeHtml(reading, part).Html, ids);
  }
  return ids;
}

std::string decodedName(Reading& reading, const ParameterText& name) {
  const std::string text =
      name.IsCoded ? toUtf8(reading.converters, name.Bytes, name.Charset) : decodedText(reading, name.Bytes);
  const std::string line = oneLine(text, 2 * text.size());
  return std::string(text::trim(text::leftBytes(line, MaxName)));
}

std::string nameOf(Reading& reading, const Part& part) {
  const std::vector<Field> fields = fieldsOf(reading, part.Header);
  const std::string name = decodedName(reading, parseDisposition(lineOf(fields, "Content-Disposition")).FileName);
  return name.empty() ? decodedName(reading, parseContentType(lineOf(fields, "Content-Type"), {}).Name) : name;
}

std::string_view encodingOf(const Part& part) {
  return part.Kind.starts_with("text/") ? fileEncoding(part.Content, part.Encoding) : part.Encoding;
}

}  // namespace

std::vector<const Part*> attachmentsOf(Reading& reading, const Parts& parts) {
  const Ids ids = unshown(reading, parts);
  const auto isAttached = [&](const Part& part) {
    return part.Is == Role::Attached || (part.Is == Role::Picture && (part.Id.empty() || ids.contains(part.Id)));
  };
  std::vector<const Part*> attached;
  for (const Part& part : parts)
    if (isAttached(part)) attached.push_back(&part);
  return attached;
}

Attachment describe(Reading& reading, const Part& part) {
  return {nameOf(reading, part), part.Kind,
          static_cast<std::int64_t>(decodedSize(reading, part.Content, encodingOf(part)))};
}

std::string contentOf(Reading& reading, const Part& part) {
  TransferDecoder decoder(part.Content, encodingOf(part));
  std::string content;
  content.reserve(part.Content.size());
  while (!decoder.atEnd()) {
    content += decoder.next(Reading::slice);
    reading.worked(Reading::slice);
  }
  return content;
}

}  // namespace velmora::mime
