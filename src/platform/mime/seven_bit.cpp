#include "platform/mime/seven_bit.h"

#include <array>
#include <utility>

namespace velmora::mime {

namespace {

constexpr unsigned highBit = 0x80;

/// What leads a character that isn't of the charset's first set (EUC).
constexpr char kanaLead = '\x8E';
constexpr char supplementLead = '\x8F';

bool isOfDouble(char c) { return c > ' ' && c < '\x7F'; }

bool isKana(char c) { return c > ' ' && c < '\x60'; }

char high(char c) { return static_cast<char>(static_cast<unsigned char>(c) | highBit); }

}  // namespace

SevenBit::SevenBit(std::string_view name) : isHz_(name == seven_bit::hz) {}

std::string_view SevenBit::eightBit() const { return isHz_ ? "GB18030" : "EUC-JP-MS"; }

std::span<const SevenBit::Escape> SevenBit::escapesOf(bool isHz) {
  static constexpr std::array hz = {
      Escape{"~{", Set::Double},       Escape{"~}", Set::Plain},      Escape{"~~", Set::Plain, "~"},
      Escape{"~\r\n", Set::Plain, ""}, Escape{"~\n", Set::Plain, ""}, Escape{"\n", Set::Plain, "\n"},
  };
  static constexpr std::array jis = {
      Escape{"\x1B(B", Set::Plain},   Escape{"\x1B(J", Set::Plain},       Escape{"\x1B(H", Set::Plain},
      Escape{"\x1B(I", Set::Kana},    Escape{"\x1B$@", Set::Double},      Escape{"\x1B$B", Set::Double},
      Escape{"\x1B$(B", Set::Double}, Escape{"\x1B$(D", Set::Supplement}, Escape{"\x0E", Set::Kana},
      Escape{"\x0F", Set::Plain},
  };
  return isHz ? std::span<const Escape>(hz) : std::span<const Escape>(jis);
}

std::string SevenBit::convert(std::string_view bytes) {
  const std::string joined = waiting_.empty() ? std::string() : std::exchange(waiting_, {}).append(bytes);
  if (!joined.empty()) bytes = joined;
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty() && takeOne(bytes, text)) {
  }
  waiting_ = bytes;
  return text;
}

std::string SevenBit::finish() {
  set_ = Set::Plain;
  return std::exchange(waiting_, {});
}

bool SevenBit::takeOne(std::string_view& bytes, std::string& text) {
  bool isCut = false;
  if (takeEscape(bytes, text, isCut)) return true;
  if (isCut) return false;
  const char c = bytes.front();
  const bool isDouble = (set_ == Set::Double || set_ == Set::Supplement) && isOfDouble(c);
  if (isDouble && bytes.size() == 1) return false;
  if (isDouble && isOfDouble(bytes[1])) {
    if (set_ == Set::Supplement) text += supplementLead;
    text += high(c);
    text += high(bytes[1]);
    bytes.remove_prefix(2);
    return true;
  }
  if (set_ == Set::Kana && isKana(c)) text += kanaLead;
  // Half a character comes out as a byte that is none.
  text += isDouble || (set_ == Set::Kana && isKana(c)) ? high(c) : c;
  bytes.remove_prefix(1);
  return true;
}

bool SevenBit::takeEscape(std::string_view& bytes, std::string& text, bool& isCut) {
  if (bytes.front() > ' ' && bytes.front() != '~') return false;
  for (const auto& [escape, after, stands] : escapesOf(isHz_)) {
    if (bytes.starts_with(escape)) {
      bytes.remove_prefix(escape.size());
      text += stands;
      set_ = after;
      return true;
    }
    isCut = isCut || escape.starts_with(bytes);
  }
  return false;
}

}  // namespace velmora::mime
