#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/profile.h"

namespace velmora {

class Platform;

/// One run of reading or writing a profile file. It keeps the last section, key and value, so that a caller needs to
/// name only what changes: "NA", in capitals, as an argument leaves the kept one in force.
///
/// The file is read when it is first needed. What is saved replaces it as a whole when the run ends, so that it is
/// never seen half written; it stays as it was where it can't be replaced, and where a failure ends the run. Only Store
/// tells of a failure: a file that can't be read looks like an empty one, and one that is there but can't be read is
/// never written, nor is anything that would be too large to be read again. Two runs on the same file don't coexist.
class IniFile {
 public:
  /// `configName` is the full path of the file.
  IniFile(Platform& platform, std::string configName);
  ~IniFile();
  IniFile(const IniFile&) = delete;
  IniFile& operator=(const IniFile&) = delete;

  std::string KeyName;
  std::string KeyValue;  ///< the last value read, or to be written
  std::string Section;

  const std::string& ConfigName() const { return configName_; }

  /// Ends the run on the former file and begins one on another.
  void ConfigName(std::string path);

  /// The section's lines, "key=value" each, and a blank text behind the last one; none at all where there is no such
  /// section. A blank argument means the kept section. Of a section longer than 2,046 characters the end is missing.
  std::vector<std::string> SectionGet(std::string_view section);

  /// The value, blank or not, or the default where there is none; 2,047 characters of it at most.
  std::string KeyGet(std::string_view section, std::string_view key, std::string_view fallback);

  void KeySave(std::string_view value, std::string_view section, std::string_view key);

  /// Forgets what the file holds: only what is saved from now on will be in it. One that can't be read stays.
  void StartAnew();

  /// Writes what was saved now. Returns whether the file holds it.
  bool Store();

 private:
  void load();

  Platform& platform_;
  std::string configName_;
  Profile profile_;
  bool loaded_ = false;
  bool replaceable_ = true;
  bool changed_ = false;
  int failures_;  ///< under way when the run began
};

}  // namespace velmora
