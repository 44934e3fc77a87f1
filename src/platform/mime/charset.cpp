#include "platform/mime/charset.h"

#include <gmime/gmime.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>

#include "platform/mime/utf8.h"
#include "platform/text.h"

namespace velmora::mime {

namespace {

constexpr std::string_view Replacement = "\uFFFD";

/// A text with more faults than this isn't in the charset that it claims, and each fault costs a call.
constexpr int MaxFaults = 10000;

/// Owns a charset conversion.
class Converter {
 public:
  explicit Converter(const std::string& charset) : handle_(g_mime_iconv_open("UTF-8", charset.c_str())) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (isKnown()) g_mime_iconv_close(handle_);
  }

  bool isKnown() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

  std::string convert(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    // iconv doesn't write to its input, though its parameter says otherwise.
    char* in = const_cast<char*>(bytes.data());
    std::size_t left = bytes.size();
    for (int faults = 0; step(&in, left, text) != 0 && left > 0;) {
      if (++faults > MaxFaults) return text + toUtf8({in, left});
      text += Replacement;
      ++in;
      --left;
    }
    step(nullptr, left, text);
    return text;
  }

 private:
  /// Converts up to the next fault or the end; 0 at the end. Without input it writes what iconv still holds back.
  int step(char** in, std::size_t& left, std::string& text) {
    std::array<char, 4096> buffer;
    for (;;) {
      char* out = buffer.data();
      std::size_t room = buffer.size();
      const std::size_t result = iconv(handle_, in, &left, &out, &room);
      const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
      text.append(buffer.data(), buffer.size() - room);
      if (error != E2BIG) return error;
    }
  }

  iconv_t handle_;
};

/// Quotation marks around the name are common. A slash would let iconv take what follows as its own options.
std::string nameOf(std::string_view charset) {
  std::string name(charset.substr(0, charset.find('/')));
  std::erase_if(name, [](char c) { return c <= ' ' || c == '"' || c == '\''; });
  return name;
}

bool isCoveredByUtf8(std::string_view name) {
  constexpr std::array<std::string_view, 4> names = {"utf-8", "utf8", "us-ascii", "ascii"};
  return name.empty() ||
         std::any_of(names.begin(), names.end(), [name](auto n) { return text::equalsIgnoringCase(n, name); });
}

}  // namespace

std::string toUtf8(std::string_view bytes, std::string_view charset) {
  const std::string name = nameOf(charset);
  if (isCoveredByUtf8(name)) return toUtf8(bytes);
  Converter converter(name);
  return converter.isKnown() ? toUtf8(converter.convert(bytes)) : toUtf8(bytes);
}

}  // namespace velmora::mime
