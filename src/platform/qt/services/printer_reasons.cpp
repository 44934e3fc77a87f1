#include "platform/qt/services/printer_reasons.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace velmora {

namespace {

/// Takes the end away, if it has it.
bool takeEnd(std::string_view& word, std::string_view end) {
  if (!word.ends_with(end)) return false;
  word.remove_suffix(end.size());
  return true;
}

/// What the print service notes for itself begins with its own name.
bool isNote(std::string_view reason) {
  return reason.empty() || reason == "none" || reason.starts_with("cups-") || reason.ends_with("-report");
}

/// What passes without anybody's doing, or still lets a printer print.
bool isPassing(std::string_view reason) {
  constexpr std::array<std::string_view, 4> passing = {"connecting-to-device", "moving-to-paused", "stopping",
                                                       "resuming"};
  return std::ranges::find(passing, reason) != passing.end() || reason.ends_with("-low") ||
         reason.find("-almost-") != std::string_view::npos;
}

}  // namespace

std::string troubleOf(const std::vector<std::string>& reasons, bool standsStill) {
  std::string words;
  for (std::string_view reason : reasons) {
    if (isNote(reason)) continue;
    if (takeEnd(reason, "-warning") && !standsStill) continue;
    takeEnd(reason, "-error");
    if (isPassing(reason) && !standsStill) continue;
    if (!words.empty()) words += ' ';
    words += reason;
  }
  return words;
}

}  // namespace velmora
