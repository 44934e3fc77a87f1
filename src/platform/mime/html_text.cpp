#include "platform/mime/html_text.h"

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>

#include "platform/mime/html_writer.h"

namespace velmora::mime {

namespace {

// The parser walks over the elements that are open for each one that is closed, and over a tag's attributes for each
// new one. Both would take a time that grows with the square of the HTML.
constexpr std::size_t maxDepth = 256;
constexpr std::ptrdiff_t maxAttributes = 300;

/// It takes text in one go, however long that is, and is slow with those that begin an entity and are none.
constexpr std::ptrdiff_t maxEntities = 20'000;

/// So little that a tag in it has no more attributes than that.
constexpr std::size_t chunk = 1024;

/// Scripts end at their own closing tag alone, text needs no paragraph, and what the HTML says of its charset has been
/// taken care of.
constexpr int options = HTML_PARSE_RECOVER | HTML_PARSE_NOIMPLIED | HTML_PARSE_IGNORE_ENC | HTML_PARSE_NOERROR |
                        HTML_PARSE_NOWARNING | HTML_PARSE_NONET;

struct ParserDeleter {
  void operator()(htmlParserCtxt* parser) const { htmlFreeParserCtxt(parser); }
};
using ParserPtr = std::unique_ptr<htmlParserCtxt, ParserDeleter>;

std::string_view viewOf(const xmlChar* text) { return text ? reinterpret_cast<const char*>(text) : ""; }

HtmlWriter& writerOf(void* writer) { return *static_cast<HtmlWriter*>(writer); }

HtmlAttributes attributesOf(const xmlChar** pairs) {
  HtmlAttributes attributes;
  for (; pairs && pairs[0]; pairs += 2) attributes.emplace_back(viewOf(pairs[0]), viewOf(pairs[1]));
  return attributes;
}

xmlSAXHandler handlers() {
  xmlSAXHandler handler{};
  handler.startElement = [](void* writer, const xmlChar* name, const xmlChar** attributes) {
    writerOf(writer).open(viewOf(name), attributesOf(attributes));
  };
  handler.endElement = [](void* writer, const xmlChar* /*name*/) { writerOf(writer).close(); };
  handler.characters = [](void* writer, const xmlChar* text, int size) {
    writerOf(writer).text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)});
  };
  handler.ignorableWhitespace = handler.characters;
  return handler;
}

/// Where a parser begins, as it ends with the first element that it closes.
constexpr std::string_view root = "<html><body>";

std::size_t readBy(htmlParserCtxt& parser) {
  return static_cast<std::size_t>(std::max(xmlByteConsumed(&parser), static_cast<long>(root.size()))) - root.size();
}

bool beginsTag(std::string_view text) {
  return text.size() > 1 && text[0] == '<' && ((text[1] | 0x20) >= 'a' && (text[1] | 0x20) <= 'z');
}

std::ptrdiff_t countOf(std::string_view characters, std::string_view text) {
  return std::count_if(text.begin(), text.end(), [&](char c) { return characters.find(c) != characters.npos; });
}

/// Feeds the parser, chunk by chunk, and takes another one for the rest where this one would become slow.
class Feeder {
 public:
  Feeder(Reading& reading, std::string_view html) : reading_(reading), rest_(html) {}

  std::string run() {
    while (!rest_.empty()) feedOne();
    return writer_.take();
  }

 private:
  /// Feeds a parser for as long as it is fast, and leaves the rest.
  void feedOne() {
    xmlSAXHandler handler = handlers();
    const ParserPtr parser(htmlCreatePushParserCtxt(&handler, &writer_, nullptr, 0, nullptr, XML_CHAR_ENCODING_UTF8));
    if (!parser) throw std::bad_alloc();
    htmlCtxtUseOptions(parser.get(), options);
    htmlParseChunk(parser.get(), root.data(), static_cast<int>(root.size()), 0);
    fed_ = 0;
    costly_ = 0;
    std::size_t end = 0;
    while (end == 0) {
      feedChunk(*parser);
      end = slowFrom(readBy(*parser));
    }
    htmlParseChunk(parser.get(), nullptr, 0, 1);
    rest_.remove_prefix(end);
  }

  void feedChunk(htmlParserCtxt& parser) {
    std::string next(rest_.substr(fed_, chunk));
    fed_ += next.size();
    std::replace(next.begin(), next.end(), '\0', ' ');  // the parser would take it for the end
    htmlParseChunk(&parser, next.data(), static_cast<int>(next.size()), 0);
    reading_.worked(chunk * workOfByte);
  }

  /// Where another parser has to go on, of which this one has read `read` bytes; 0 where it needn't. A script is one
  /// text for the parser, however long, and costs nothing.
  std::size_t slowFrom(std::size_t read) {
    if (fed_ == rest_.size()) return fed_;
    if (writer_.isInScript()) return 0;
    if (writer_.depth() > maxDepth) return read;
    const std::string_view waiting = rest_.substr(read, fed_ - read);
    const std::string_view next = waiting.substr(waiting.size() - std::min(chunk, waiting.size()));
    const bool inTag = beginsTag(waiting);
    // Each attribute but the first has a blank or a quotation mark in front of it.
    costly_ = (waiting.size() > chunk ? costly_ : 0) + countOf(inTag ? " \t\n\r\f\"'" : "&", next);
    if (!inTag) return costly_ > maxEntities ? fed_ : 0;
    return costly_ > maxAttributes ? std::min(rest_.find('>', fed_), rest_.size() - 1) + 1 : 0;
  }

  static constexpr std::size_t workOfByte = 16;

  Reading& reading_;
  HtmlWriter writer_;
  std::string_view rest_;
  std::size_t fed_ = 0;        ///< of the rest, to this parser
  std::ptrdiff_t costly_ = 0;  ///< characters in what the parser has not read yet
};

}  // namespace

std::string htmlToText(Reading& reading, std::string_view html) { return Feeder(reading, html).run(); }

}  // namespace velmora::mime
