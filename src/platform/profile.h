#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The text of a profile file: sections in brackets, and in them lines of key, equals sign and value. Any bytes are a
/// profile. Names of sections and keys are matched without regard to case; where one stands twice, the first counts.
/// Blanks around names and values don't belong to them. Lines that begin with a semicolon are comments.
class Profile {
 public:
  Profile() : Profile(std::string_view()) {}
  explicit Profile(std::string_view text);

  /// The section's lines as key, equals sign and value, each ended by a NUL, in the order in which they stand. Blank
  /// for a section that isn't there. With the NUL that ends it all, the result fits a buffer of `size` characters, for
  /// which its end is cut off where it must be.
  std::string GetPrivateProfileSection(std::string_view section, std::size_t size) const;

  /// The key's value, or `fallback` where it isn't there, cut off so that with a NUL behind it fits `size` characters.
  /// A pair of quotation marks, single or double, around the value is left away: what blanks it holds stay.
  std::string GetPrivateProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                                      std::size_t size) const;

  /// Puts the value, as it is, into the key's line. A key that isn't there yet becomes the last of its section, and a
  /// section that isn't there the last of all. Every other line stays as it is. A line break in any of the three would
  /// begin another line; it becomes a blank. A read finds the value again where the section's name has no "]", and the
  /// key's no "=" nor a "[" or ";" at its beginning.
  void WritePrivateProfileString(std::string_view section, std::string_view key, std::string_view value);

  /// What a read gives back of a value that is written.
  static std::string readBack(std::string_view value);

  /// The whole text, byte by byte what it was made of but for what was written.
  std::string text() const;

 private:
  struct Line {
    std::string text;
    std::string end;  ///< "\r\n", "\n", or nothing at the end of the file
  };
  struct Section {
    std::vector<Line> lines;                  ///< the first is the header, but for what precedes all sections
    std::map<std::string, std::size_t> keys;  ///< by name in capitals, the line of each
  };

  void add(Line line);
  const Section* find(std::string_view section) const;
  Section& findOrAdd(const std::string& name);

  std::string mark_;            ///< the byte-order mark, where there is one
  std::string lineEnd_ = "\n";  ///< of lines that are written
  std::vector<Section> sections_;
  std::map<std::string, std::size_t> names_;  ///< by name in capitals
};

}  // namespace velmora
