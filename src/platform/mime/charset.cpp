#include "platform/mime/charset.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/mime/utf8.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::string_view Replacement = "\uFFFD";

/// A text with more faults than this isn't in the charset that it claims, and each fault costs a call.
constexpr std::size_t MaxFaults = 10000;

/// No charset has longer ones.
constexpr std::size_t LongestCharacter = 16;

/// Quotation marks around the name are common, and what a slash begins is no part of it.
std::string nameOf(std::string_view charset) {
  std::string name(charset.substr(0, charset.find('/')));
  std::erase_if(name, [](char c) { return c <= ' ' || c == '"' || c == '\''; });
  return name;
}

bool isCoveredByUtf8(std::string_view name) {
  constexpr std::array<std::string_view, 6> names = {"utf-8", "utf8",           "us-ascii",
                                                     "ascii", "ansi_x3.4-1968", "iso646-us"};
  return name.empty() ||
         std::any_of(names.begin(), names.end(), [name](auto n) { return text::equalsIgnoringCase(n, name); });
}

Converter* converterFor(Converters& converters, std::string_view charset) {
  const std::string name = nameOf(charset);
  return isCoveredByUtf8(name) ? nullptr : converters.find(name);
}

}  // namespace

CharsetDecoder::CharsetDecoder(Converters& converters, std::string_view charset)
    : converter_(converterFor(converters, charset)) {
  std::string rest;
  if (converter_ != nullptr) converter_->finish(rest);  // a text before may have been given up
}

std::string CharsetDecoder::decode(std::string_view bytes) {
  if (converter_ != nullptr) return toUtf8(convert(bytes));
  waiting_ += bytes;
  const std::size_t whole = waiting_.size() - incompleteEnd(waiting_);
  std::string text = toUtf8(std::string_view(waiting_).substr(0, whole));
  waiting_.erase(0, whole);
  return text;
}

std::string CharsetDecoder::convert(std::string_view bytes) {
  const std::string joined = waiting_.empty() ? std::string() : std::exchange(waiting_, {}).append(bytes);
  if (!joined.empty()) bytes = joined;
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 4);
  for (;;) {
    const Converter::End end = converter_->convert(bytes, text);
    if (end == Converter::End::Done) return text;
    if (end == Converter::End::Incomplete && bytes.size() < LongestCharacter) {
      waiting_ = bytes;
      return text;
    }
    if (++faults_ > MaxFaults) {
      converter_ = nullptr;
      return text.append(decode(bytes));
    }
    text += Replacement;
    bytes.remove_prefix(1);
  }
}

std::string CharsetDecoder::finish() {
  if (converter_ == nullptr) return toUtf8(std::exchange(waiting_, {}));
  std::string text;
  for (; !waiting_.empty(); waiting_.pop_back()) text += Replacement;
  converter_->finish(text);
  return toUtf8(text);
}

std::string toUtf8(Converters& converters, std::string_view bytes, std::string_view charset) {
  CharsetDecoder decoder(converters, charset);
  std::string text = decoder.decode(bytes);
  return text += decoder.finish();
}

}  // namespace velmora::mime
