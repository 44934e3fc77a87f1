#pragma once

#include <iconv.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::mime {

/// A conversion into UTF-8 by the system's tables (iconv). It converts one text at a time, in slices.
class Converter {
 public:
  explicit Converter(const std::string& charset);
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter();

  bool isKnown() const;

  enum class End { Done, Fault, Incomplete };

  /// Appends the text of `bytes` and takes off what it has read: all of it, or what comes before a byte that the
  /// charset doesn't have or a character that isn't there in whole. Such bytes stay.
  End convert(std::string_view& bytes, std::string& text);

  /// Appends what is still held back, and makes ready for another text.
  void finish(std::string& text);

 private:
  End step(char** in, std::size_t& left, std::string& text);

  iconv_t handle_;
};

/// The conversions that strangers' messages have asked for lately. To open one makes the system load a file, and a
/// message may ask for another one with every word.
class Converters {
 public:
  /// More than any message has, and few enough to open in a few milliseconds.
  static constexpr std::size_t most = 64;

  /// A message begins: it may have `most` conversions opened.
  void startMessage() { opened_ = 0; }

  /// The conversion of a charset by the system's name; nothing where the system has none, or where the message has
  /// asked for too many. Good until the next call.
  Converter* find(std::string name);

 private:
  struct Entry {
    std::string name;
    std::unique_ptr<Converter> converter;  ///< none where the system knows no such charset
  };

  void open(std::string name);

  std::vector<Entry> entries_;  ///< the one that was asked for last in front, `most` of them
  std::size_t opened_ = 0;
};

}  // namespace velmora::mime
