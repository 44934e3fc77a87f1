#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace velmora::mime {

bool isUtf8(std::string_view bytes);

/// Valid UTF-8 from any bytes: what is UTF-8 stays, every other byte is taken as Windows-1252.
std::string toUtf8(std::string_view bytes);

/// The bytes at the end that begin a character and don't end it, 0 to 3.
std::size_t incompleteEnd(std::string_view bytes);

/// One line of at most `maxBytes`, with an ellipsis where more was there: line breaks and control characters become one
/// blank, none remain at the ends. The control characters U+0080 to U+009F, which real mail never means, become what
/// Windows-1252 has in their place.
std::string oneLine(std::string_view utf8, std::size_t maxBytes);

/// Text in lines that end with CR LF, without control characters but the tab, made of valid UTF-8 that comes in slices.
/// A slice ends with a whole character.
class LineWriter {
 public:
  /// Makes room for about so many bytes, as growing would hold up the caller and take twice the room.
  explicit LineWriter(std::size_t bytes) { text_.reserve(bytes); }

  void add(std::string_view utf8);
  const std::string& text() const { return text_; }

  /// Takes back all but so many bytes.
  void cutTo(std::size_t bytes) { text_.resize(bytes); }
  std::string take() { return std::move(text_); }

 private:
  std::string text_;
  bool afterReturn_ = false;
};

}  // namespace velmora::mime
