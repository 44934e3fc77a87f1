#include "platform/mime/converters.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <utility>

#include "platform/ascii.h"

namespace velmora::mime {

namespace {

constexpr std::size_t longestName = 40;

struct Alias {
  std::string_view mail, system;
};

/// Names that mail uses and the system doesn't know, or takes more literally than mail programs: for decades they have
/// written what a vendor added to a charset under the name of that charset.
constexpr std::array aliases = {
    Alias{"GB2312", "GB18030"},
    Alias{"GB_2312-80", "GB18030"},
    Alias{"GB-2312", "GB18030"},
    Alias{"GBK", "GB18030"},
    Alias{"SHIFT_JIS", "CP932"},
    Alias{"SHIFT-JIS", "CP932"},
    Alias{"SJIS", "CP932"},
    Alias{"MS_KANJI", "CP932"},
    Alias{"EUC-JP", "EUC-JP-MS"},
    Alias{"EUC-KR", "CP949"},
    Alias{"KS_C_5601-1987", "CP949"},
    Alias{"KS_C_5601", "CP949"},
    Alias{"KSC_5601", "CP949"},
    Alias{"KSC5601", "CP949"},
    Alias{"WINDOWS-949", "CP949"},
    Alias{"BIG5", "BIG5-HKSCS"},
    Alias{"TIS-620", "CP874"},
    Alias{"ISO-8859-11", "CP874"},
    Alias{"ISO-8859-8-I", "ISO-8859-8"},
    Alias{"ISO-8859-8-E", "ISO-8859-8"},
    Alias{"ISO-8859-6-I", "ISO-8859-6"},
    Alias{"UNICODE-1-1-UTF-7", "UTF-7"},
    Alias{"ISO-10646-UCS-2", "UCS-2"},
    Alias{"MAC-ROMAN", "MACINTOSH"},
    Alias{"WIN-1251", "CP1251"},
    Alias{"WINDOWS1251", "CP1251"},
    Alias{"CP-850", "CP850"},
};

/// Once a text has told its byte order, these keep it for the texts to come, whatever they are told.
constexpr std::array<std::string_view, 7> keepByteOrder = {"UTF-16", "UTF16", "UNICODE", "CSUNICODE",
                                                           "UTF-32", "UTF32", "UCS-2"};

/// What a name of a charset is made of (RFC 2978 section 2.3). A slash would let iconv take what follows as its own
/// options.
bool isOfName(char c) {
  return ascii::isCapital(c) || ascii::isDigit(c) || std::string_view("-_.:+()").find(c) != std::string_view::npos;
}

/// The system's name, blank where it can be none.
std::string systemName(std::string_view charset) {
  if (charset.size() > longestName) return {};
  std::string name(charset);
  std::transform(name.begin(), name.end(), name.begin(), ascii::upper);
  if (!std::all_of(name.begin(), name.end(), isOfName)) return {};
  if (name.starts_with("X-")) name.erase(0, 2);
  const auto alias = std::find_if(aliases.begin(), aliases.end(), [&](const Alias& a) { return a.mail == name; });
  return alias == aliases.end() ? name : std::string(alias->system);
}

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

Converter* Converters::find(std::string_view charset) {
  std::string name = systemName(charset);
  if (name.empty()) return nullptr;
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
