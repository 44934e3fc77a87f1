#include "platform/file_name.h"

#include <cstddef>

#include "platform/text.h"

namespace velmora {

namespace {

std::string_view withoutEnd(std::string_view name) { return name.substr(0, name.find_last_not_of(" .") + 1); }

}  // namespace

std::string fileNamePart(std::string_view path) { return std::string(path.substr(path.find_last_of("\\/") + 1)); }

std::vector<std::string> fileEndings(std::string_view filter) {
  std::vector<std::string> endings;
  for (auto star = filter.find("|*"); star != std::string_view::npos; star = filter.find("|*", star + 1)) {
    const std::string_view ending = filter.substr(star + 2);
    endings.emplace_back(ending.substr(0, ending.find('|')));
  }
  return endings;
}

std::string savedName(std::string_view name, std::span<const std::string> endings) {
  const auto begin = name.find_first_not_of(" .-");
  if (begin == std::string_view::npos) return {};
  name = withoutEnd(name.substr(begin));
  std::string_view ending = endings.front();
  for (const std::string& each : endings) {
    if (!text::endsWithIgnoringCase(name, each)) continue;
    ending = name.substr(name.size() - each.size());
    name.remove_suffix(each.size());
    break;
  }
  const std::string_view kept = withoutEnd(text::leftBytes(name, longestFileName - ending.size()));
  return std::string(kept).append(ending);
}

}  // namespace velmora
