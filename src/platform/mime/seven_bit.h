#pragma once

#include <span>
#include <string>
#include <string_view>

namespace velmora::mime {

namespace seven_bit {

// Names of their own, which no charset of the system has.
constexpr std::string_view hz = "seven-bit HZ";    ///< RFC 1843
constexpr std::string_view jis = "seven-bit JIS";  ///< ISO-2022-JP (RFC 1468), with what programs added to it

}  // namespace seven_bit

/// A charset of seven bits, in which escapes tell what the bytes behind them are, turned into one of eight bits with
/// the same characters, slice by slice. The system has no HZ, and in ISO-2022-JP not the characters of vendors, which
/// stand in much of the mail.
class SevenBit {
 public:
  /// `name` is one of the above.
  explicit SevenBit(std::string_view name);

  /// The charset by the system's name that the bytes are turned into.
  std::string_view eightBit() const;

  /// What is cut in the middle of a character or an escape waits for the next call.
  std::string convert(std::string_view bytes);

  /// What still waits, as it is.
  std::string finish();

 private:
  enum class Set { Plain, Kana, Double, Supplement };
  struct Escape {
    std::string_view bytes;
    Set after;
    std::string_view text = {};
  };

  /// Takes off what makes up one character or escape; false where there isn't all of it.
  bool takeOne(std::string_view& bytes, std::string& text);
  bool takeEscape(std::string_view& bytes, std::string& text, bool& isCut);

  static std::span<const Escape> escapesOf(bool isHz);

  bool isHz_;
  Set set_ = Set::Plain;
  std::string waiting_;
};

}  // namespace velmora::mime
