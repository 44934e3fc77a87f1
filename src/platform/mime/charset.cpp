#include "platform/mime/charset.h"

#include <utility>

#include "platform/mime/charset_names.h"
#include "platform/mime/utf8.h"

namespace velmora::mime {

namespace {

constexpr std::string_view Replacement = "\uFFFD";

/// A text with more faults than this isn't in the charset that it claims, and each fault costs a call.
constexpr std::size_t MaxFaults = 10000;

/// No charset has longer ones.
constexpr std::size_t LongestCharacter = 16;

}  // namespace

CharsetDecoder::CharsetDecoder(Converters& converters, std::string_view charset) {
  std::string name = systemCharset(charset);
  if (name == seven_bit::hz || name == seven_bit::jis) name = sevenBit_.emplace(name).eightBit();
  if (!name.empty()) converter_ = converters.find(std::move(name));
  std::string rest;
  if (converter_ != nullptr) converter_->finish(rest);  // a text before may have been given up
  if (converter_ == nullptr) sevenBit_.reset();
}

std::string CharsetDecoder::decode(std::string_view bytes) {
  if (sevenBit_) return toUtf8(convert(sevenBit_->convert(bytes)));
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
      sevenBit_.reset();
      return text.append(decode(bytes));
    }
    text += Replacement;
    bytes.remove_prefix(1);
  }
}

std::string CharsetDecoder::finish() {
  std::string text = sevenBit_ ? convert(sevenBit_->finish()) : std::string();
  if (converter_ == nullptr) return toUtf8(text.append(std::exchange(waiting_, {})));
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
