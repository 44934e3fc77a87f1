#include "platform/mime/text_layout.h"

#include <algorithm>

namespace velmora::mime {

namespace {

/// Where lines begin so far to the right, nothing is gained by more, and a stranger could make much of little.
constexpr std::size_t widestPrefix = 16;

constexpr std::string_view noBreakSpace = "\u00A0";

bool isWhite(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

}  // namespace

void TextLayout::words(std::string_view utf8) {
  for (std::size_t i = 0; i < utf8.size();) {
    if (isWhite(utf8[i])) {
      if (!afterWhite_ && !isLineEmpty()) blanks_ += ' ';
      afterWhite_ = true;
      ++i;
    } else if (utf8.substr(i).starts_with(noBreakSpace)) {
      heldOpen_ = true;
      afterWhite_ = false;
      blanks_ += ' ';
      i += noBreakSpace.size();
    } else {
      const auto begin = i;
      while (i < utf8.size() && !isWhite(utf8[i]) && !utf8.substr(i).starts_with(noBreakSpace)) ++i;
      put(utf8.substr(begin, i - begin));
    }
  }
}

void TextLayout::preformatted(std::string_view utf8) {
  for (std::size_t i = 0; i < utf8.size();) {
    const auto end = std::min(utf8.find_first_of(" \t\n\r", i), utf8.size());
    if (end > i) put(utf8.substr(i, end - i));
    i = end + 1;
    if (end == utf8.size()) return;
    if (utf8[end] == '\n') {
      lineBreak();
    } else if (utf8[end] != '\r') {
      blanks_ += utf8[end];
    }
  }
}

void TextLayout::append(std::string_view utf8) { text_ += utf8; }

void TextLayout::block(Gap gap) {
  if (heldOpen_ && isLineEmpty()) lineBreak();
  owe(std::max(breaks_, static_cast<int>(gap)));
}

void TextLayout::lineBreak() { owe(isLineEmpty() ? breaks_ + 1 : 1); }

void TextLayout::owe(int breaks) {
  if (cellBegins_ && (rowBegun_ || belowData_)) return;
  blanks_.clear();
  afterWhite_ = heldOpen_ = false;
  breaks_ = std::min(breaks, static_cast<int>(Gap::BlankLine));
}

std::size_t TextLayout::indent(std::string_view prefix) {
  if (prefix_.size() + prefix.size() > widestPrefix) return 0;
  prefix_ += prefix;
  return prefix.size();
}

void TextLayout::outdent(std::size_t size) {
  prefix_.resize(prefix_.size() - size);
  if (prefix_.size() < markEnd_) dropMark();
}

void TextLayout::mark(std::string mark, std::size_t size) {
  mark_ = std::move(mark);
  markEnd_ = prefix_.size();
  markSize_ = size;
}

void TextLayout::beginRow() {
  cellBegins_ = rowBegun_ = rowBroken_ = false;
  // The margins of paragraphs in the cells don't tear a table of data apart, but stand between those of a layout.
  belowData_ = std::exchange(rowHasTabs_, false);
  if (belowData_) breaks_ = 0;
  block(Gap::Line);
}

void TextLayout::beginCell() {
  cellBegins_ = false;
  if (rowBegun_ && !rowBroken_) {
    breaks_ = 0;
    heldOpen_ = false;
    if (blanks_.find('\t') == std::string::npos) blanks_.clear();
    blanks_ += '\t';
    rowHasTabs_ = true;
  } else {
    block(Gap::Line);
  }
  cellBegins_ = true;
}

void TextLayout::endTable() {
  cellBegins_ = rowHasTabs_ = false;
  rowBegun_ = rowBroken_ = true;
  block(Gap::Line);
}

void TextLayout::put(std::string_view word) {
  if (isLineEmpty()) beginLine();
  text_.append(blanks_).append(word);
  blanks_.clear();
  afterWhite_ = heldOpen_ = cellBegins_ = false;
  rowBegun_ = true;
}

void TextLayout::beginLine() {
  if (rowBegun_) rowBroken_ = true;
  if (!text_.empty()) text_.append(static_cast<std::size_t>(breaks_), '\n');
  breaks_ = 0;
  if (mark_.empty()) {
    text_ += prefix_;
  } else {
    text_.append(prefix_, 0, markEnd_ - markSize_).append(mark_).append(prefix_, markEnd_);
    mark_.clear();
  }
}

}  // namespace velmora::mime
