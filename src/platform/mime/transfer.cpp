#include "platform/mime/transfer.h"

#include <gmime/gmime.h>

#include <cstddef>

namespace velmora::mime {

namespace {

/// The lines between "begin" and "end" where both are there.
std::string_view uuencodedLines(std::string_view content) {
  if (const auto begin = content.find("begin "); begin == 0 || (begin != content.npos && content[begin - 1] == '\n')) {
    const auto lineEnd = content.find('\n', begin);
    content.remove_prefix(lineEnd == content.npos ? content.size() : lineEnd + 1);
  }
  return content.substr(0, content.find("\nend"));
}

std::string decode(std::string_view content, GMimeContentEncoding encoding) {
  GMimeEncoding state;
  g_mime_encoding_init_decode(&state, encoding);
  std::string decoded(g_mime_encoding_outlen(&state, content.size()) + 8, '\0');
  std::size_t size = g_mime_encoding_step(&state, content.data(), content.size(), decoded.data());
  // Padding that is missing at the end would cost the last characters; more than enough does no harm.
  if (encoding == GMIME_CONTENT_ENCODING_BASE64) size += g_mime_encoding_step(&state, "==", 2, decoded.data() + size);
  decoded.resize(size);
  return decoded;
}

}  // namespace

std::string decodeTransfer(std::string_view content, std::string_view encoding) {
  const std::string name(encoding.substr(0, encoding.find_first_of(" \t;(")));
  switch (const auto kind = g_mime_content_encoding_from_string(name.c_str())) {
    case GMIME_CONTENT_ENCODING_BASE64:
    case GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE:
      return decode(content, kind);
    case GMIME_CONTENT_ENCODING_UUENCODE:
      return decode(uuencodedLines(content), kind);
    default:
      return std::string(content);
  }
}

}  // namespace velmora::mime
