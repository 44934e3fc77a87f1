#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace velmora::mime {

/// Reads a structured value from front to back, however it breaks the rules.
class Scanner {
 public:
  explicit Scanner(std::string_view value) : rest_(value) {}

  bool atEnd() const { return rest_.empty(); }
  bool take(char c);

  /// Blanks, comments and any of `others`.
  void skip(std::string_view others);

  /// Up to any of `ends`.
  std::string_view until(std::string_view ends);

  /// What stands behind an opening quotation mark, up to the closing one.
  std::string quoted();

 private:
  void skipComment();

  std::string_view rest_;
};

/// A parameter's name as it stands, with the stars that RFC 2231 puts behind it, and its value without quotes.
using TakeParameter = std::function<void(std::string_view name, std::string_view value)>;

/// The parameters that the rest of a value holds.
void readParameters(Scanner& scanner, const TakeParameter& take);

/// The text of a parameter, put together from what stands of it.
struct ParameterText {
  std::string Bytes;
  std::string Charset;   ///< of the bytes, blank where it isn't told
  bool IsCoded = false;  ///< its characters were escaped; else encoded words may stand in it
};

/// One parameter, which may come in sections and in a charset of its own (RFC 2231 sections 3 and 4). Such a form
/// counts before a plain one, since that is meant for those who don't know it; of two alike the first counts.
class Parameter {
 public:
  explicit Parameter(std::string_view name) : name_(name) {}

  /// Takes what it is where it bears this parameter's name.
  void add(std::string_view name, std::string_view value);

  ParameterText text() const;

 private:
  struct Section {
    std::string Value;
    bool IsCoded;
  };

  std::string_view name_;
  std::string plain_;
  std::map<unsigned, Section> sections_;
};

}  // namespace velmora::mime
