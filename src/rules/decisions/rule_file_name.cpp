#include "rules/decisions/rule_file_name.h"

#include <algorithm>
#include <array>

#include "platform/characters.h"
#include "platform/file_name.h"

namespace velmora {

namespace {

constexpr std::string_view prefix = "Rules";
constexpr std::string_view ending = ".ini";

std::string withoutFirst(int most, std::string_view what, std::string_view text) {
  std::string rest;
  for (auto at = text.find(what); most > 0 && at != std::string_view::npos; at = text.find(what), --most) {
    rest += text.substr(0, at);
    text.remove_prefix(at + what.size());
  }
  return rest.append(text);
}

struct Range {
  char32_t first;
  char32_t last;
};

/// What can't be seen, and what turns the direction of writing: "ini.boB" would look like "Bob.ini".
constexpr auto unseen = std::to_array<Range>({{0x80, 0x9F},
                                              {0xAD, 0xAD},
                                              {0x200B, 0x200B},
                                              {0x200E, 0x200F},
                                              {0x2028, 0x202E},
                                              {0x2060, 0x206F},
                                              {0xFEFF, 0xFEFF},
                                              {0xE0000, 0xE0FFF}});

bool isHarmless(std::string_view character) {
  const auto byte = static_cast<unsigned char>(character.front());
  if (character.size() == 1) return byte >= 0x20 && byte < 0x7F;
  const char32_t code = text::decoded(character);
  return std::ranges::none_of(unseen, [code](const Range& range) { return code >= range.first && code <= range.last; });
}

bool isHarmlessText(std::string_view text) {
  while (!text.empty()) {
    const auto size = text::characterSize(text);
    if (!isHarmless(text.substr(0, size))) return false;
    text.remove_prefix(size);
  }
  return true;
}

}  // namespace

std::string rulesPrefixed(std::string_view name) {
  return std::string(prefix) + withoutFirst(4, "Rule", withoutFirst(5, prefix, name));
}

std::string withIniEnding(const std::string& name) {
  return name.ends_with(ending) ? name : name + std::string(ending);
}

std::string_view faultOfFileName(std::string_view name) {
  if (name.find_first_of("/\\") != std::string_view::npos) {
    return "It must be a name without a folder: '/' and '\\' can not be\r\npart of it. The location can not be "
           "changed.";
  }
  if (!isHarmlessText(name)) return "It holds characters that can not be seen.";
  if (name.size() > longestFileName) return "It is too long.";
  return {};
}

}  // namespace velmora
