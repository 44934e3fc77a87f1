#include "platform/mime/converters.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <utility>

namespace velmora::mime {

namespace {

/// Once a text has told its byte order, these keep it for the texts to come, whatever they are told.
constexpr std::array<std::string_view, 7> keepByteOrder = {"UTF-16", "UTF16", "UNICODE", "CSUNICODE",
                                                           "UTF-32", "UTF32", "UCS-2"};

}  // namespace

Converter::Converter(const std::string& charset) : handle_(iconv_open("UTF-8", charset.c_str())) {}

Converter::~Converter() {
  if (isKnown()) iconv_close(handle_);
}

bool Converter::isKnown() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

Converter::End Converter::convert(std::string_view& bytes, std::string& text) {
  // iconv doesn't write to its input, though its parameter says otherwise.
  char* in = const_cast<char*>(bytes.data());
  std::size_t left = bytes.size();
  const End end = step(&in, left, text);
  bytes.remove_prefix(bytes.size() - left);
  return end;
}

void Converter::finish(std::string& text) {
  std::size_t nothing = 0;
  step(nullptr, nothing, text);
  iconv(handle_, nullptr, nullptr, nullptr, nullptr);
}

Converter::End Converter::step(char** in, std::size_t& left, std::string& text) {
  std::array<char, 4096> buffer;
  for (;;) {
    char* out = buffer.data();
    std::size_t room = buffer.size();
    const std::size_t result = iconv(handle_, in, &left, &out, &room);
    const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
    text.append(buffer.data(), buffer.size() - room);
    if (error == E2BIG) continue;
    if (error == 0) return End::Done;
    return error == EINVAL ? End::Incomplete : End::Fault;
  }
}

Converter* Converters::find(std::string name) {
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.name == name; });
  const bool isLasting = std::find(keepByteOrder.begin(), keepByteOrder.end(), name) == keepByteOrder.end();
  if (found != entries_.end() && isLasting) {
    std::rotate(entries_.begin(), found, found + 1);
  } else {
    if (opened_ == most) return nullptr;
    if (found != entries_.end()) entries_.erase(found);
    open(std::move(name));
  }
  return entries_.front().converter.get();
}

void Converters::open(std::string name) {
  ++opened_;
  auto converter = std::make_unique<Converter>(name);
  if (!converter->isKnown()) converter.reset();
  if (entries_.size() == most) entries_.pop_back();
  entries_.insert(entries_.begin(), {std::move(name), std::move(converter)});
}

}  // namespace velmora::mime
