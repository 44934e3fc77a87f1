#include "platform/mime/transfer.h"

#include <gmime/gmime.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "platform/ascii.h"
#include "platform/mime/base64_text.h"

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

struct EncodingName {
  std::string_view begin;  ///< of its letters and digits, in small letters
  GMimeContentEncoding kind;
};

/// Programs write signs into the names, or leave them out, and put something behind.
constexpr std::array encodingNames = {
    EncodingName{"base64", GMIME_CONTENT_ENCODING_BASE64},
    EncodingName{"xbase64", GMIME_CONTENT_ENCODING_BASE64},
    EncodingName{"b64", GMIME_CONTENT_ENCODING_BASE64},
    EncodingName{"quotedprint", GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE},
    EncodingName{"quoteprint", GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE},
    EncodingName{"qp", GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE},
    EncodingName{"uue", GMIME_CONTENT_ENCODING_UUENCODE},
    EncodingName{"xuue", GMIME_CONTENT_ENCODING_UUENCODE},
};

GMimeContentEncoding kindOf(std::string_view encoding) {
  constexpr std::size_t longest = 40;
  std::string letters;
  for (const char c : encoding.substr(0, longest))
    if (ascii::isLetter(c) || ascii::isDigit(c)) letters += ascii::lower(c);
  const auto* const found = std::ranges::find_if(
      encodingNames, [&letters](const EncodingName& name) { return letters.starts_with(name.begin); });
  return found == encodingNames.end() ? GMIME_CONTENT_ENCODING_DEFAULT : found->kind;
}

bool isBase64(char c) { return ascii::isLetter(c) || ascii::isDigit(c) || c == '+' || c == '/'; }

/// What stands for something in base64 that nothing breaks. The compiler makes one step of this for many bytes, which
/// attachments of megabytes need.
bool isPlausible(char c) { return static_cast<bool>(int{c > ' '} & int{c != '='}); }

template <class Matches>
std::size_t count(Reading& reading, std::string_view content, Matches matches) {
  std::size_t found = 0;
  while (!content.empty()) {
    const std::string_view slice = content.substr(0, Reading::slice);
    unsigned inSlice = 0;
    for (const char c : slice) inSlice += matches(c) ? 1U : 0U;
    found += inSlice;
    reading.worked(slice.size());
    content.remove_prefix(slice.size());
  }
  return found;
}

/// Gateways put blanks behind the "=" that ends a line softly (RFC 2045 section 6.7, rule 3). Takes the bytes off the
/// front up to such a "=", and the blanks with them.
std::string_view takeToSoftEnd(std::string_view& rest) {
  for (auto at = rest.find('='); at != rest.npos; at = rest.find('=', at + 1)) {
    const auto blanksEnd = std::min(rest.find_first_not_of(" \t", at + 1), rest.size() - 1);
    if (blanksEnd <= at + 1 || (rest[blanksEnd] != '\r' && rest[blanksEnd] != '\n')) continue;
    const std::string_view piece = rest.substr(0, at + 1);
    rest.remove_prefix(blanksEnd);
    return piece;
  }
  return std::exchange(rest, {});
}

}  // namespace

std::string_view textEncoding(std::string_view content, std::string_view encoding, std::string_view charset) {
  const bool isText = kindOf(encoding) == GMIME_CONTENT_ENCODING_BASE64 && !isBase64Text(content, charset);
  return isText ? std::string_view() : encoding;
}

std::string_view fileEncoding(std::string_view content, std::string_view encoding) {
  return kindOf(encoding) == GMIME_CONTENT_ENCODING_BASE64 && !hasFormOfBase64(content) ? std::string_view() : encoding;
}

struct TransferDecoder::State {
  GMimeContentEncoding encoding;
  GMimeEncoding decoder;
  bool padded = false;  ///< the decoder has come to an end

  /// Takes the bytes off the front that are decoded in one go: of base64 letters up to a padding, or a padding. Some
  /// programs encode piece by piece, and each piece ends with padding: what follows begins anew.
  std::string_view takePiece(std::string_view& rest) {
    if (encoding == GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE) return takeToSoftEnd(rest);
    if (encoding != GMIME_CONTENT_ENCODING_BASE64) return std::exchange(rest, {});
    const auto next = std::ranges::find_if(rest, isBase64);
    const bool isPadding = std::find(rest.begin(), next, '=') != next;
    if (!isPadding && padded && next != rest.end()) {
      g_mime_encoding_reset(&decoder);
      padded = false;
    }
    padded = padded || isPadding;
    const auto size = static_cast<std::size_t>((isPadding ? next : std::find(next, rest.end(), '=')) - rest.begin());
    const std::string_view piece = rest.substr(0, size);
    rest.remove_prefix(size);
    return piece;
  }
};

TransferDecoder::TransferDecoder(std::string_view content, std::string_view encoding) : content_(content) {
  const GMimeContentEncoding kind = kindOf(encoding);
  if (kind == GMIME_CONTENT_ENCODING_UUENCODE) content_ = uuencodedLines(content);
  if (kind != GMIME_CONTENT_ENCODING_BASE64 && kind != GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE &&
      kind != GMIME_CONTENT_ENCODING_UUENCODE)
    return;
  state_ = std::make_unique<State>();
  state_->encoding = kind;
  g_mime_encoding_init_decode(&state_->decoder, kind);
}

TransferDecoder::~TransferDecoder() = default;

std::string TransferDecoder::next(std::size_t maxBytes) {
  std::size_t wanted = std::min(maxBytes, content_.size());
  // The decoder takes half a padding for none, and an end of a line that is cut for text.
  constexpr std::size_t longestPadding = 16;
  for (const std::size_t end = std::min(wanted + longestPadding, content_.size());
       state_ && wanted < end && !isBase64(content_[wanted]); ++wanted) {
  }
  const std::string_view slice = content_.substr(0, wanted);
  content_.remove_prefix(slice.size());
  if (!state_) return std::string(slice);
  std::string decoded(g_mime_encoding_outlen(&state_->decoder, slice.size()) + 8, '\0');
  std::size_t size = 0;
  for (std::string_view rest = slice; !rest.empty();) {
    const std::string_view piece = state_->takePiece(rest);
    size += g_mime_encoding_step(&state_->decoder, piece.data(), piece.size(), decoded.data() + size);
  }
  // Padding that is missing at the end would cost the last characters; more than enough does no harm.
  if (atEnd() && state_->encoding == GMIME_CONTENT_ENCODING_BASE64)
    size += g_mime_encoding_step(&state_->decoder, "==", 2, decoded.data() + size);
  decoded.resize(size);
  return decoded;
}

std::size_t decodedSize(Reading& reading, std::string_view content, std::string_view encoding) {
  switch (kindOf(encoding)) {
    case GMIME_CONTENT_ENCODING_BASE64:
      return count(reading, content, isPlausible) * 3 / 4;
    case GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE:
      return content.size() - std::min(content.size(), 2 * count(reading, content, [](char c) { return c == '='; }));
    case GMIME_CONTENT_ENCODING_UUENCODE:
      // A full line takes 62 bytes to bring 45.
      return uuencodedLines(content).size() * 45 / 62;
    default:
      return content.size();
  }
}

std::string decodeTransfer(std::string_view content, std::string_view encoding) {
  return TransferDecoder(content, encoding).next(content.size());
}

std::string decodePercent(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned code = 0;
    const std::string_view digits = text.substr(std::min(i + 1, text.size()), 2);
    const bool isEscape = text[i] == '%' && digits.size() == 2 &&
                          std::from_chars(digits.data(), digits.data() + 2, code, 16).ptr == digits.data() + 2;
    decoded += isEscape ? static_cast<char>(code) : text[i];
    if (isEscape) i += 2;
  }
  return decoded;
}

}  // namespace velmora::mime
