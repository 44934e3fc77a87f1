#include "platform/mime/content_type.h"

#include <algorithm>
#include <cstddef>

#include "platform/ascii.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

/// Real ones are shorter than half of it.
constexpr std::size_t longestKind = 100;

/// RFC 2045 section 5.1.
bool isTokenCharacter(char c) {
  constexpr std::string_view others = "!#$%&'*+-.^_`{|}~";
  return ascii::isLetter(c) || ascii::isDigit(c) || others.find(c) != others.npos;
}

bool isToken(std::string_view text) { return !text.empty() && std::ranges::all_of(text, isTokenCharacter); }

}  // namespace

bool ContentType::is(std::string_view type) const { return text::equalsIgnoringCase(Type, type); }

bool ContentType::is(std::string_view type, std::string_view subtype) const {
  return is(type) && text::equalsIgnoringCase(Subtype, subtype);
}

ContentType parseContentType(std::string_view value, const ContentType& fallback) {
  Scanner scanner(value);
  ContentType type;
  scanner.skip("");
  type.Type = scanner.until("/;,( \t");
  scanner.skip("");
  if (scanner.take('/')) {
    scanner.skip("");
    type.Subtype = scanner.until(";,( \t");
  } else {
    // Old programs write just "text".
    type.Type = fallback.Type;
    type.Subtype = fallback.Subtype;
  }
  Parameter charset("charset");
  Parameter boundary("boundary");
  Parameter start("start");
  Parameter name("name");
  readParameters(scanner, [&](std::string_view parameter, std::string_view text) {
    for (Parameter* const each : {&charset, &boundary, &start, &name}) each->add(parameter, text);
  });
  type.Charset = charset.text().Bytes;
  type.Boundary = boundary.text().Bytes;
  type.Start = start.text().Bytes;
  type.Name = name.text();
  return type;
}

std::string kindOf(const ContentType& type) {
  std::string kind = type.Type + "/" + type.Subtype;
  if (kind.size() > longestKind || !isToken(type.Type) || !isToken(type.Subtype)) return "application/octet-stream";
  std::ranges::transform(kind, kind.begin(), ascii::lower);
  return kind;
}

Disposition parseDisposition(std::string_view value) {
  constexpr std::string_view attachment = "attachment";
  Scanner scanner(value);
  Parameter fileName("filename");
  scanner.until("; \t");
  readParameters(scanner, [&](std::string_view parameter, std::string_view text) { fileName.add(parameter, text); });
  return {text::equalsIgnoringCase(value.substr(0, attachment.size()), attachment), fileName.text()};
}

}  // namespace velmora::mime
