#include "platform/mime/part_text.h"

#include <cstddef>

#include "platform/mime/charset.h"
#include "platform/mime/transfer.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::size_t MaxHtml = std::size_t{8} << 20U;

}  // namespace

void decodeText(Reading& reading, const Part& part, const std::function<bool(std::string_view)>& take) {
  constexpr std::string_view byteOrderMark = "\uFEFF";
  TransferDecoder bytes(part.Content, part.Encoding);
  CharsetDecoder text(reading.converters, part.Charset);
  bool begins = true;
  for (bool ended = false; !ended;) {
    ended = bytes.atEnd();
    const std::string slice = ended ? text.finish() : text.decode(bytes.next(Reading::slice));
    std::string_view rest = slice;
    if (begins && rest.starts_with(byteOrderMark)) rest.remove_prefix(byteOrderMark.size());
    begins = begins && slice.empty();
    if (!take(rest)) return;
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
