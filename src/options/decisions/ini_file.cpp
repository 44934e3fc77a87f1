#include "options/decisions/ini_file.h"

#include <exception>
#include <utility>

#include "platform/platform.h"

namespace velmora {

namespace {

/// Characters that a read makes room for.
constexpr std::size_t bufferSize = 2048;

void keep(std::string& field, std::string_view argument) {
  if (argument != "NA") field = argument;
}

}  // namespace

IniFile::IniFile(Platform& platform, std::string configName)
    : platform_(platform), configName_(std::move(configName)), failures_(std::uncaught_exceptions()) {}

IniFile::~IniFile() {
  if (std::uncaught_exceptions() == failures_) Store();
}

void IniFile::ConfigName(std::string path) {
  Store();
  configName_ = std::move(path);
  loaded_ = false;
}

void IniFile::load() {
  if (std::exchange(loaded_, true)) return;
  const auto content = platform_.readFile(configName_);
  replaceable_ = content.has_value() || !platform_.fileExists(configName_);
  profile_ = Profile(content.value_or(""));
}

bool IniFile::Store() {
  if (!std::exchange(changed_, false)) return true;
  const std::string text = profile_.text();
  return replaceable_ && text.size() <= largestReadFile && platform_.writeFile(configName_, text);
}

std::vector<std::string> IniFile::SectionGet(std::string_view section) {
  if (!section.empty()) Section = section;
  if (Section.empty()) return {};
  load();
  const std::string lines = profile_.GetPrivateProfileSection(Section, bufferSize);
  if (lines.empty()) return {};
  std::vector<std::string> result(1);
  for (const char c : lines) {
    if (c == '\0') {
      result.emplace_back();
    } else {
      result.back() += c;
    }
  }
  return result;
}

std::string IniFile::KeyGet(std::string_view section, std::string_view key, std::string_view fallback) {
  keep(Section, section);
  keep(KeyName, key);
  load();
  KeyValue = profile_.GetPrivateProfileString(Section, KeyName, fallback, bufferSize);
  return KeyValue;
}

void IniFile::KeySave(std::string_view value, std::string_view section, std::string_view key) {
  keep(KeyValue, value);
  keep(Section, section);
  keep(KeyName, key);
  load();
  profile_.WritePrivateProfileString(Section, KeyName, KeyValue);
  changed_ = true;
}

void IniFile::StartAnew() {
  load();
  profile_ = Profile();
  changed_ = true;
}

}  // namespace velmora
