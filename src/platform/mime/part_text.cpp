#include "platform/mime/part_text.h"

#include <cstddef>

#include "platform/mime/charset.h"
#include "platform/mime/charset_names.h"
#include "platform/mime/html_charset.h"
#include "platform/mime/transfer.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::size_t MaxHtml = std::size_t{8} << 20U;

/// A byte order mark counts where its bytes mean nothing in the charset that the part is said to have.
std::string charsetOf(const Part& part, std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return "utf-8";
  const bool isBig = bytes.starts_with("\xFE\xFF");
  if ((isBig || bytes.starts_with("\xFF\xFE")) && systemCharset(part.Charset).empty())
    return isBig ? "utf-16be" : "utf-16le";
  return part.Charset.empty() && part.Is == Role::Html ? charsetInHtml(bytes) : part.Charset;
}

}  // namespace

std::string charsetOf(const Part& part) {
  constexpr std::size_t begin = 4096;
  const std::string_view bytes = part.Content.substr(0, begin);
  return charsetOf(part, TransferDecoder(bytes, textEncoding(bytes, part.Encoding, part.Charset)).next(begin));
}

void decodeText(Reading& reading, const Part& part, const std::function<bool(std::string_view)>& take) {
  constexpr std::string_view byteOrderMark = "\uFEFF";
  TransferDecoder bytes(part.Content, textEncoding(part.Content, part.Encoding, part.Charset));
  std::string slice = bytes.next(Reading::slice);
  CharsetDecoder text(reading.converters, charsetOf(part, slice));
  slice = text.decode(slice);
  bool begins = true;
  for (bool ended = false;; slice = ended ? text.finish() : text.decode(bytes.next(Reading::slice))) {
    std::string_view rest = slice;
    if (begins && rest.starts_with(byteOrderMark)) rest.remove_prefix(byteOrderMark.size());
    begins = begins && slice.empty();
    if (!take(rest) || ended) return;
    ended = bytes.atEnd();
    reading.worked(Reading::slice);
  }
}

HtmlText decodeHtml(Reading& reading, const Part& part) {
  std::string html;
  decodeText(reading, part, [&](std::string_view text) {
    html += text;
    return html.size() <= MaxHtml;
  });
  const std::size_t size = text::leftBytes(html, MaxHtml).size();
  const bool isWhole = size == html.size();
  html.resize(size);
  return {std::move(html), isWhole};
}

}  // namespace velmora::mime
